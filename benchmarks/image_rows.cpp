#include "image_rows.h"

#include "archive/tools.h"
#include "inputs.h"
#include "steps.h"

namespace stowlark {
namespace {

Action imageCreation(const Path &tree, const Path &image, std::vector<std::string> options) {
    options.insert(options.begin(), {"create", "-volname", "Files", "-srcfolder", tree.native(), "-ov"});
    options.push_back(image.native());
    return bareTool({.tool = Tools().hdiutil, .arguments = std::move(options)});
}

/// Makes `tree`, and a tar of it, where they are missing.
Action maker(const Path &tree, void (*make)(const Path &tree), const Path &tar) {
    return [=] {
        if (!std::filesystem::exists(tar)) {
            make(tree);
            bareTool({.tool = Tools().tar, .arguments = {"-cf", tar.native(), "-C", tree.native(), "."}})();
        }
    };
}

} // namespace

void addImageRows(std::vector<Row> &rows, const Path &folder) {
    const Path hdiutil = Tools().hdiutil;
    if (hdiutil.filename() != "stowlark-hdiutil" || !std::filesystem::exists(hdiutil)) {
        return;
    }
    const Path large = folder / "more large files";
    const Path largeTar = folder / "large.tar";
    const Path small = folder / "more small files";
    const Path smallTar = folder / "small.tar";
    const Path copy = folder / "copy of files";
    const Path image = folder / "files.dmg";
    const std::vector<std::string> fast{"-format", "UDZO", "-imagekey", "zlib-level=1"};
    const auto compression = [](const char *tool, const char *level, const Path &tar) {
        return bareTool({.tool = tool, .arguments = {level, "-kf", tar.native()}});
    };
    rows.push_back({.name = "image, zlib 1, 300 MB : gzip -1",
                    .limit = 0.6,
                    .stowlark = {.run = imageCreation(large, image, fast)},
                    .bare = {.run = compression("/usr/bin/gzip", "-1", largeTar)},
                    .prepare = maker(large, makeMoreLargeFiles, largeTar)});
    if (std::filesystem::exists("/usr/bin/bzip2")) {
        rows.push_back({.name = "image, bzip2, 300 MB : bzip2 -9",
                        .limit = 0.65,
                        .stowlark = {.run = imageCreation(large, image, {"-format", "UDBZ"})},
                        .bare = {.run = compression("/usr/bin/bzip2", "-9", largeTar)},
                        .prepare = maker(large, makeMoreLargeFiles, largeTar)});
    }
    rows.push_back(
        {.name = "image, 20,000 files : cp, gzip -1",
         .limit = 1.5,
         .stowlark = {.run = imageCreation(small, image, fast)},
         .bare = {.run =
                      [=] {
                          bareTool({.tool = "/bin/cp", .arguments = {"-a", small.native(), copy.native()}})();
                          compression("/usr/bin/gzip", "-1", smallTar)();
                      },
                  .after = removal(copy)},
         .prepare = maker(small, makeMoreSmallFiles, smallTar)});
}

} // namespace stowlark
