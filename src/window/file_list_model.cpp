#include "window/file_list_model.h"

#include "foundation/byte_count.h"
#include "foundation/file_url.h"
#include "foundation/worker.h"
#include "window/uri_list.h"

#include <QElapsedTimer>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace stowlark {

int FileListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant FileListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const QUrl &url = urls_[static_cast<std::size_t>(index.row())];
    const FileAttributes &attributes = attributes_[static_cast<std::size_t>(index.row())];
    const Path file = path(url);
    switch (role) {
    case urlRole:
        return url;
    case nameRole:
        return displayText(lastPathComponent(file));
    case folderRole:
        return displayText(parentFolder(file).native());
    case sizeRole:
        return fileSize(attributes).value_or(QString());
    case isFolderRole:
        return attributes.isFolder;
    case iconRole:
        return attributes.isFolder ? QStringLiteral("folder.fill") : smartIcon(file);
    default:
        return {};
    }
}

QHash<int, QByteArray> FileListModel::roleNames() const {
    return {{urlRole, "url"},   {nameRole, "name"},         {folderRole, "folder"},
            {sizeRole, "size"}, {isFolderRole, "isFolder"}, {iconRole, "icon"}};
}

QString FileListModel::countText() const {
    return QStringLiteral("%1 item%2").arg(count()).arg(count() == 1 ? QLatin1String() : QLatin1String("s"));
}

QString FileListModel::totalSize() const {
    qint64 sum = 0;
    for (const FileAttributes &attributes : attributes_) {
        if (__builtin_add_overflow(sum, attributes.size.value_or(0), &sum)) {
            return {};
        }
    }
    return sum < 1 ? QString() : byteCountText(sum);
}

void FileListModel::add(const QByteArray &uriList) {
    known_.reserve(known_.size() + uriList.count("file:")); // growing it step by step takes long turns
    waiting_ += uriList + '\n';
    if (!isReading_) {
        isReading_ = true;
        QCoro::connect(addWaiting(), this, [] {});
    }
}

/// As many as are read within a moment, for folders on a slow server; not so many that adding their rows
/// takes long.
FileListModel::Portion FileListModel::nextPortion(const QByteArray &uriList, qsizetype begin) {
    constexpr std::size_t mostItems = 2500;
    constexpr qint64 longestTime = 50; // milliseconds
    QElapsedTimer time;
    time.start();
    Portion portion{{}, begin};
    while (portion.end < uriList.size() && portion.items.size() < mostItems &&
           !time.hasExpired(longestTime)) {
        const std::optional<QUrl> url = nextFile(uriList, portion.end);
        if (url) {
            portion.items.push_back({*url, fileAttributes(path(*url))});
        }
    }
    return portion;
}

QCoro::Task<> FileListModel::addWaiting() {
    const QPointer<FileListModel> alive(this);
    const int clearings = clearings_;
    Q_EMIT changed();
    while (isAdding()) {
        const auto next = [list = waiting_, begin = nextWaiting_] { return nextPortion(list, begin); };
        const Portion portion = co_await onWorker(next);
        if (!alive || clearings != clearings_) {
            co_return;
        }
        append(portion.items);
        nextWaiting_ = portion.end;
        if (nextWaiting_ == waiting_.size()) {
            waiting_.clear();
            nextWaiting_ = 0;
        }
        Q_EMIT changed();
    }
    isReading_ = false;
}

void FileListModel::append(const std::vector<Item> &items) {
    std::vector<Item> added;
    for (const Item &item : items) {
        const auto size = known_.size();
        known_.insert(item.url);
        if (known_.size() > size) {
            added.push_back(item);
        }
    }
    if (added.empty()) {
        return;
    }
    beginInsertRows({}, count(), count() + static_cast<int>(added.size()) - 1);
    for (const Item &item : added) {
        urls_.push_back(item.url);
        attributes_.push_back(item.attributes);
    }
    endInsertRows();
}

void FileListModel::remove(const QUrl &url) {
    const auto found = std::ranges::find(urls_, url);
    if (found == urls_.end()) {
        return;
    }
    const auto row = static_cast<int>(found - urls_.begin());
    beginRemoveRows({}, row, row);
    attributes_.erase(attributes_.begin() + row);
    urls_.erase(found);
    known_.remove(url);
    endRemoveRows();
    Q_EMIT changed();
}

void FileListModel::clear() {
    waiting_.clear();
    nextWaiting_ = 0;
    ++clearings_;
    isReading_ = false; // what still reads, perhaps from a server that never answers, is not waited for
    if (!urls_.empty()) {
        beginRemoveRows({}, 0, count() - 1);
        // To free a long list takes long, which a worker does.
        workers().start([urls = std::exchange(urls_, {}), attributes = std::exchange(attributes_, {}),
                         known = std::exchange(known_, {})] {});
        endRemoveRows();
    }
    Q_EMIT changed();
}

} // namespace stowlark
