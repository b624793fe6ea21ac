#pragma once

#include <QAbstractListModel>
#include <QList>
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

    /// Appends those that are not in the list yet.
    void add(const QList<QUrl> &urls);
    void remove(const QUrl &url);
    void clear();

Q_SIGNALS:
    void changed();

private:
    std::vector<QUrl> urls_;
    std::vector<qint64> sizes_; ///< of each as it was added, 0 where it could not be read
    QSet<QUrl> known_;
};

} // namespace stowlark
