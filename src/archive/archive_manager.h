#pragma once

#include "archive/archive_format.h"
#include "archive/compression_level.h"
#include "archive/tools.h"

#include <QCoro/QCoroTask>

#include <QObject>
#include <QUrl>

#include <optional>
#include <vector>

namespace stowlark {

/// The archive engine: creates and extracts archives, and publishes what it is doing. Lives on the main
/// thread; each property is written in the order that the operations state, announced by `objectWillChange`
/// before and by its own signal after every write, also of an equal value.
class ArchiveManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isCreating READ isCreating NOTIFY isCreatingChanged)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(bool statusIsError READ statusIsError NOTIFY statusIsErrorChanged)
    Q_PROPERTY(QUrl lastOutputURL READ lastOutputURL NOTIFY lastOutputURLChanged)

public:
    explicit ArchiveManager(Tools tools = {}, QObject *parent = nullptr);

    /// An operation (creation or extraction) is under way. Callers start no second one then.
    bool isCreating() const { return isCreating_; }
    /// The status line; empty when there is nothing to report.
    QString statusMessage() const { return statusMessage_; }
    bool statusIsError() const { return statusIsError_; }
    /// The archive just created or the folder just extracted into; empty when there is none.
    QUrl lastOutputURL() const { return lastOutputURL_; }

    /// Archives `files` (file URLs of files and folders) into the new file `outputURL`, replacing what is
    /// there. The inputs are copied to a temporary folder first and never touched. Never fails: the outcome
    /// is in the properties. The operation goes on if this object dies meanwhile.
    QCoro::Task<> createArchive(std::vector<QUrl> files, ArchiveFormat format, CompressionLevel level,
                                QUrl outputURL);

    /// Unpacks an archive into a new folder in `outputDir` that is named after it. Never fails, as above.
    QCoro::Task<> extractArchive(QUrl archiveURL, QUrl outputDir);

    /// Takes the status line away; a running operation goes on.
    void clearStatus();

    /// A text if the tool that creates `format` is optional and not installed.
    std::optional<QString> toolWarning(ArchiveFormat format) const { return tools_.toolWarning(format); }

Q_SIGNALS:
    void objectWillChange();
    void isCreatingChanged();
    void statusMessageChanged();
    void statusIsErrorChanged();
    void lastOutputURLChanged();

private:
    template <typename Value>
    void publish(Value ArchiveManager::*property, const Value &value, void (ArchiveManager::*changed)());

    void begin(const QString &message);
    void succeed(const QUrl &output, const QString &message);
    void finish(const std::optional<QString> &failure);

    Tools tools_;
    bool isCreating_ = false;
    QString statusMessage_;
    bool statusIsError_ = false;
    QUrl lastOutputURL_;
};

} // namespace stowlark
