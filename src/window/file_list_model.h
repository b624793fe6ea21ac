#pragma once

#include "window/file_display.h"

#include <QAbstractListModel>
#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QSet>
#include <QUrl>
#include <QtQml/qqml.h>

#include <vector>

namespace stowlark {

/// The items to compress: file URLs in the order of adding, none twice.
class FileListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The window owns it")
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(QString countText READ countText NOTIFY changed)
    Q_PROPERTY(QString totalSize READ totalSize NOTIFY changed)

public:
    enum Role { urlRole = Qt::UserRole, nameRole, folderRole, sizeRole, isFolderRole, iconRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const std::vector<QUrl> &urls() const { return urls_; }
    int count() const { return static_cast<int>(urls_.size()); }
    /// "1 item", "2 items".
    QString countText() const;
    /// The sum of the sizes as text, folders not walked; empty if it is below 1 or too large to count.
    QString totalSize() const;

    /// Appends the files of this machine that are not in the list yet; `uriList` is of the type
    /// text/uri-list. Returns at once: the files' attributes, kept as they are then, are read on a worker
    /// thread, and rows come in portions that keep the window alive.
    void add(const QByteArray &uriList);
    /// Some of what was added has no row yet.
    bool isAdding() const { return !waiting_.isEmpty(); }
    void remove(const QUrl &url);
    /// Also what is still being added.
    void clear();

Q_SIGNALS:
    void changed();

private:
    struct Item {
        QUrl url;
        FileAttributes attributes;
    };
    struct Portion {
        std::vector<Item> items;
        qsizetype end; ///< where the next one begins
    };

    static Portion nextPortion(const QByteArray &uriList, qsizetype begin);
    QCoro::Task<> addWaiting();
    void append(const std::vector<Item> &items);

    std::vector<QUrl> urls_;
    std::vector<FileAttributes> attributes_; ///< of each
    QSet<QUrl> known_;                       ///< the same URLs, to find
    QByteArray waiting_;                     ///< being added: all from `nextWaiting_` on
    qsizetype nextWaiting_ = 0;
    bool isReading_ = false; ///< `addWaiting` is running, begun after the last clearing
    int clearings_ = 0;
};

} // namespace stowlark
