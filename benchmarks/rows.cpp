#include "rows.h"

#include "archive/archive_manager.h"
#include "archive/staging.h"
#include "failure.h"
#include "foundation/file_url.h"
#include "image_rows.h"
#include "inputs.h"
#include "start_rows.h"
#include "steps.h"

#include <QCoro/QCoroTask>

#include <memory>

namespace stowlark {
namespace {

struct Input {
    std::string label;
    Path tree;
    void (*make)(const Path &tree);
    double createLimit;

    Action maker() const {
        return [*this] {
            if (!std::filesystem::exists(tree)) {
                make(tree);
            }
        };
    }
};

struct Format {
    std::string label;
    ArchiveFormat format;
    std::string extension;
};

void failIfFailed(const ArchiveManager &manager) {
    if (manager.statusIsError()) {
        // The message may be all that the tool wrote: a line for each file.
        throw Failure(manager.statusMessage().section(u'\n', -3));
    }
}

Action creation(const Path &tree, ArchiveFormat format, const Path &output) {
    return [=] {
        ArchiveManager manager;
        QCoro::waitFor(
            manager.createArchive({fileUrl(tree)}, format, CompressionLevel::normal, fileUrl(output)));
        failIfFailed(manager);
    };
}

Action extraction(const Path &archive, const Path &folder) {
    return [=] {
        ArchiveManager manager;
        QCoro::waitFor(manager.extractArchive(fileUrl(archive), fileUrl(folder)));
        failIfFailed(manager);
    };
}

Action bareCreation(const Path &tree, ArchiveFormat format, const Path &output) {
    const std::string name = lastPathComponent(tree);
    if (format == ArchiveFormat::zip) {
        return bareTool({.tool = Tools().zip,
                         .arguments = {"-6", "-r", output.native(), name},
                         .workingDirectory = parentFolder(tree)});
    }
    return bareTool({.tool = Tools().tar,
                     .arguments = {"-czf", output.native(), name},
                     .workingDirectory = parentFolder(tree),
                     .environment = {{{"GZIP", "-6"}}}});
}

Action bareExtraction(const Path &archive, ArchiveFormat format, const Path &folder) {
    if (format == ArchiveFormat::zip) {
        return bareTool(
            {.tool = Tools().unzip, .arguments = {"-o", archive.native(), "-d", folder.native()}});
    }
    return bareTool({.tool = Tools().tar, .arguments = {"-xf", archive.native(), "-C", folder.native()}});
}

Row stagingRow(const Path &folder, const Input &input) {
    const auto staged = std::make_shared<Path>();
    const Path copy = folder / "copy";
    return {.name = "stage " + input.label,
            .limit = 1.00,
            .stowlark = {.run = [=, tree = input.tree] { *staged = stageFiles({tree}); },
                         .after = [=] { removal (*staged)(); }},
            .bare = {.run = bareTool(
                         {.tool = "/bin/cp", .arguments = {"-a", input.tree.native(), copy.native()}}),
                     .after = removal(copy)},
            .prepare = input.maker()};
}

Row removalRow(const Input &input) {
    const auto staged = std::make_shared<Path>();
    const Action stage = [=, tree = input.tree] { *staged = stageFiles({tree}); };
    return {.name = "remove staged " + input.label,
            .limit = 1.00,
            .stowlark = {.run = [=] { removal (*staged)(); }, .before = stage},
            .bare = {.run =
                         [=] {
                             bareTool({.tool = "/bin/rm", .arguments = {"-rf", staged->native()}})();
                         },
                     .before = stage},
            .prepare = input.maker()};
}

Row creationRow(const Path &folder, const Input &input, const Format &format) {
    const Path output = folder / ("created" + format.extension);
    const Action removeOutput = fileRemoval(output);
    return {.name = "create " + format.label + ", " + input.label,
            .limit = input.createLimit,
            .stowlark = {.run = creation(input.tree, format.format, output), .after = removeOutput},
            .bare = {.run = bareCreation(input.tree, format.format, output), .after = removeOutput},
            .prepare = input.maker()};
}

Row extractionRow(const Path &folder, const Input &input, const Format &format) {
    const std::string name = lastPathComponent(input.tree);
    const Path archive = folder / (name + format.extension);
    const Path unpacked = folder / "unpacked";
    const Path target = unpacked / name;
    return {.name = "extract " + format.label + ", " + input.label,
            .limit = 1.05,
            .stowlark = {.run = extraction(archive, unpacked), .after = removal(unpacked)},
            .bare = {.run = bareExtraction(archive, format.format, target),
                     .before = [target] { std::filesystem::create_directories(target); },
                     .after = removal(unpacked)},
            .prepare = [make = input.maker(), pack = bareCreation(input.tree, format.format, archive)] {
                make();
                pack();
            }};
}

} // namespace

std::vector<Row> allRows(const Path &folder) {
    const Input small{"10,000 files", folder / "small files", makeSmallFiles, 1.30};
    const Input large{"240 MB", folder / "large files", makeLargeFiles, 1.05};
    const Format zip{"ZIP", ArchiveFormat::zip, ".zip"};
    const Format tarGz{"TAR.GZ", ArchiveFormat::tarGz, ".tar.gz"};

    std::vector<Row> rows{stagingRow(folder, small), stagingRow(folder, large), removalRow(small)};
    for (const auto &makeRow : {creationRow, extractionRow}) {
        for (const Format &format : {zip, tarGz}) {
            rows.push_back(makeRow(folder, small, format));
            rows.push_back(makeRow(folder, large, format));
        }
    }
    addImageRows(rows, folder);
    addStartRows(rows, folder);
    return rows;
}

} // namespace stowlark
