#include "failure.h"
#include "interruption.h"
#include "measure.h"
#include "rows.h"
#include "turns.h"
#include "working_folder.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace stowlark {
namespace {

constexpr auto about =
    "Compares Stowlark with the tools that it runs, called bare on the same files. A row's times are\n"
    "medians of samples that alternate between the two. Its ratio is what counts; OVER marks one above\n"
    "its limit. The rows of the start compare it with a window that holds one button, up to the first "
    "frame,\n"
    "and the memory once both are idle. On a virtual display both are drawn without a graphics card.\n"
    "\n"
    "The files are kept in memory (/dev/shm) where that has 4 GB of room, else in the system's folder for\n"
    "temporary files. On ext4, making and deleting the same thousands of files over and over makes new\n"
    "files slow within a minute, as it avoids the inodes deleted last. That slows every program alike and\n"
    "drowns the ratio.";

struct Options {
    QString folder;
    QString only;
    int samples;
    bool turns;
};

Options parseOptions(const QCoreApplication &application) {
    const QCommandLineOption samples(QStringLiteral("samples"), QStringLiteral("Samples of each side (5)."),
                                     QStringLiteral("N"), QStringLiteral("5"));
    const QCommandLineOption folder(QStringLiteral("folder"), QStringLiteral("Work in a new folder in DIR."),
                                    QStringLiteral("DIR"), roomyParent());
    const QCommandLineOption only(QStringLiteral("only"),
                                  QStringLiteral("Run only the rows whose names contain TEXT."),
                                  QStringLiteral("TEXT"));
    const QCommandLineOption turns(
        QStringLiteral("turns"),
        QStringLiteral(
            "Also measure how long the event loop stands still while 100,000 files are staged and listed."));
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(about));
    parser.addHelpOption();
    parser.addOptions({samples, folder, only, turns});
    parser.process(application);

    Options options{parser.value(folder), parser.value(only), parser.value(samples).toInt(),
                    parser.isSet(turns)};
    if (options.samples < 1 || !parser.positionalArguments().isEmpty()) {
        parser.showHelp(EXIT_FAILURE);
    }
    return options;
}

void run(const Options &options) {
    const WorkingFolder folder(options.folder);
    std::printf("Working in %s (%s), medians of %d\n\n", folder.path().c_str(),
                qUtf8Printable(folder.fileSystemType()), options.samples);
    printHeadings();
    for (const Row &row : allRows(folder.path())) {
        if (QString::fromStdString(row.name).contains(options.only, Qt::CaseInsensitive)) {
            measure(row, options.samples);
        }
    }
    if (options.turns) {
        measureTurns(folder.path());
        measureWindowTurns(folder.path());
    }
}

} // namespace
} // namespace stowlark

int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    const stowlark::Options options = stowlark::parseOptions(application);
    stowlark::noteInterruptions();
    try {
        stowlark::run(options);
    } catch (const stowlark::LocalizedError &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.errorDescription()));
        return EXIT_FAILURE;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
