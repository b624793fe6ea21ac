#include "window/file_list_model.h"

#include "foundation/byte_count.h"
#include "foundation/file_url.h"
#include "window/file_display.h"

#include <algorithm>
#include <iterator>

namespace stowlark {

int FileListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant FileListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const QUrl &url = urls_[static_cast<std::size_t>(index.row())];
    const Path file = path(url);
    switch (role) {
    case urlRole:
        return url;
    case nameRole:
        return displayText(lastPathComponent(file));
    case folderRole:
        return displayText(parentFolder(file).native());
    case sizeRole:
        return fileSize(file).value_or(QString());
    case isFolderRole:
        return isFolder(file);
    case iconRole:
        return isFolder(file) ? QStringLiteral("folder.fill") : smartIcon(file);
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
    for (const qint64 size : sizes_) {
        if (__builtin_add_overflow(sum, size, &sum)) {
            return {};
        }
    }
    return sum < 1 ? QString() : byteCountText(sum);
}

void FileListModel::add(const QList<QUrl> &urls) {
    std::vector<QUrl> added;
    for (const QUrl &url : urls) {
        if (!known_.contains(url)) {
            known_.insert(url);
            added.push_back(url);
        }
    }
    if (added.empty()) {
        return;
    }
    beginInsertRows({}, count(), count() + static_cast<int>(added.size()) - 1);
    urls_.insert(urls_.end(), added.begin(), added.end());
    std::ranges::transform(added, std::back_inserter(sizes_),
                           [](const QUrl &url) { return attributeSize(path(url)).value_or(0); });
    endInsertRows();
    Q_EMIT changed();
}

void FileListModel::remove(const QUrl &url) {
    const auto found = std::ranges::find(urls_, url);
    if (found == urls_.end()) {
        return;
    }
    const auto row = static_cast<int>(found - urls_.begin());
    beginRemoveRows({}, row, row);
    sizes_.erase(sizes_.begin() + row);
    urls_.erase(found);
    known_.remove(url);
    endRemoveRows();
    Q_EMIT changed();
}

void FileListModel::clear() {
    beginResetModel();
    urls_.clear();
    sizes_.clear();
    known_.clear();
    endResetModel();
    Q_EMIT changed();
}

} // namespace stowlark
