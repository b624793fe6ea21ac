#include "archive/archive_manager.h"

#include "archive/existing_output.h"
#include "archive/extraction.h"
#include "archive/extractors.h"
#include "archive/staging.h"
#include "archive/writers.h"
#include "foundation/errors.h"
#include "foundation/file_url.h"
#include "foundation/remove_item.h"
#include "foundation/worker.h"

#include <QPointer>

#include <algorithm>

namespace stowlark {
namespace {

std::vector<Path> paths(const std::vector<QUrl> &fileUrls) {
    std::vector<Path> result(fileUrls.size());
    std::ranges::transform(fileUrls, result.begin(), [](const QUrl &url) { return path(url); });
    return result;
}

} // namespace

template <typename Value>
void ArchiveManager::publish(Value ArchiveManager::*property, const Value &value,
                             void (ArchiveManager::*changed)()) {
    Q_EMIT objectWillChange();
    this->*property = value;
    Q_EMIT(this->*changed)();
}

ArchiveManager::ArchiveManager(Tools tools, QObject *parent)
    : QObject(parent)
    , tools_(std::move(tools)) {}

QCoro::Task<> ArchiveManager::createArchive(std::vector<QUrl> files, ArchiveFormat format,
                                            CompressionLevel level, QUrl outputURL) {
    const QPointer<ArchiveManager> self(this);
    const Tools tools = tools_;
    const Path output = path(outputURL);
    Path stageDir;
    std::optional<QString> failure;
    begin(QStringLiteral("Creating archive…"));
    try {
        auto stage = [output, files] {
            const std::vector<Path> inputs = paths(files);
            removeExistingOutput(output, inputs);
            return stageFiles(inputs);
        };
        stageDir = co_await onWorker(std::move(stage));
        co_await writeArchive(tools, format, stageDir, level, output);
        if (self) {
            self->succeed(outputURL,
                          QStringLiteral("Archive created: ") + displayText(lastPathComponent(output)));
        }
    } catch (const std::exception &error) {
        failure = localizedDescription(error);
    }
    if (!stageDir.empty()) {
        auto removeStage = [stageDir] { removeOwnFolder(stageDir); };
        co_await onWorker(std::move(removeStage));
    }
    if (self) {
        self->finish(failure);
    }
}

QCoro::Task<> ArchiveManager::extractArchive(QUrl archiveURL, QUrl outputDir) {
    const QPointer<ArchiveManager> self(this);
    const Tools tools = tools_;
    const Path archive = path(archiveURL);
    std::optional<QString> failure;
    begin(QStringLiteral("Extracting…"));
    try {
        auto makeFolder = [folder = path(outputDir),
                           name = extractionFolderName(lastPathComponent(archive))] {
            return createExtractionFolder(folder, name);
        };
        const Path dest = co_await onWorker(std::move(makeFolder));
        co_await extractInto(tools, archive, dest);
        if (self) {
            self->succeed(fileUrl(dest),
                          QStringLiteral("Extracted to: ") + displayText(lastPathComponent(dest)) + u'/');
        }
    } catch (const std::exception &error) {
        failure = localizedDescription(error);
    }
    if (self) {
        self->finish(failure);
    }
}

void ArchiveManager::clearStatus() {
    publish(&ArchiveManager::statusMessage_, QString(), &ArchiveManager::statusMessageChanged);
    publish(&ArchiveManager::statusIsError_, false, &ArchiveManager::statusIsErrorChanged);
    publish(&ArchiveManager::lastOutputURL_, QUrl(), &ArchiveManager::lastOutputURLChanged);
}

void ArchiveManager::begin(const QString &message) {
    publish(&ArchiveManager::isCreating_, true, &ArchiveManager::isCreatingChanged);
    publish(&ArchiveManager::statusMessage_, message, &ArchiveManager::statusMessageChanged);
    publish(&ArchiveManager::statusIsError_, false, &ArchiveManager::statusIsErrorChanged);
    publish(&ArchiveManager::lastOutputURL_, QUrl(), &ArchiveManager::lastOutputURLChanged);
}

void ArchiveManager::succeed(const QUrl &output, const QString &message) {
    publish(&ArchiveManager::lastOutputURL_, output, &ArchiveManager::lastOutputURLChanged);
    publish(&ArchiveManager::statusMessage_, message, &ArchiveManager::statusMessageChanged);
    publish(&ArchiveManager::statusIsError_, false, &ArchiveManager::statusIsErrorChanged);
}

void ArchiveManager::finish(const std::optional<QString> &failure) {
    if (failure) {
        publish(&ArchiveManager::statusMessage_, *failure, &ArchiveManager::statusMessageChanged);
        publish(&ArchiveManager::statusIsError_, true, &ArchiveManager::statusIsErrorChanged);
    }
    publish(&ArchiveManager::isCreating_, false, &ArchiveManager::isCreatingChanged);
}

} // namespace stowlark
