#include "inputs.h"

#include "failure.h"

#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace stowlark {
namespace {

/// The distributions of the standard library differ between systems; the numbers of this engine do not.
using Random = std::mt19937_64;

std::size_t below(Random &random, std::size_t limit) {
    return random() % limit;
}

/// Text of made-up words, the first of them frequent and the last ones rare.
class Writer {
public:
    explicit Writer(Random &random)
        : random_(random) {
        for (std::string &word : words_) {
            const std::size_t length = 2 + below(random_, 9);
            while (word.size() < length) {
                word += static_cast<char>('a' + below(random_, 26));
            }
        }
    }

    std::string text(std::size_t size) {
        std::string result;
        result.reserve(size + 16);
        while (result.size() < size) {
            const std::size_t rarity = 1 + below(random_, words_.size());
            result += words_[below(random_, rarity)];
            result += below(random_, 12) == 0 ? '\n' : ' ';
        }
        result.resize(size);
        return result;
    }

private:
    Random &random_;
    std::vector<std::string> words_ = std::vector<std::string>(4000);
};

std::string noise(Random &random, std::size_t size) {
    std::string result(size, '\0');
    for (char &byte : result) {
        byte = static_cast<char>(random());
    }
    return result;
}

void writeFile(const Path &file, const std::string &contents) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    stream.close();
    if (!stream) {
        throw Failure(QStringLiteral("%1 couldn’t be written.").arg(displayText(file.native())));
    }
}

/// Calls `contents` for each of `count` files that it makes in each of 100 folders.
template <typename Contents>
void makeFolders(const Path &tree, int count, Contents contents) {
    for (int folder = 0; folder < 100; ++folder) {
        const Path path = tree / ("folder " + std::to_string(folder));
        std::filesystem::create_directories(path);
        for (int file = 0; file < count; ++file) {
            writeFile(path / ("file " + std::to_string(file) + ".txt"), contents());
        }
    }
}

void makeTexts(const Path &tree, int filesInEachFolder) {
    Random random(1);
    Writer writer(random);
    makeFolders(tree, filesInEachFolder, [&] { return writer.text(512 + below(random, 8192 - 512 + 1)); });
}

void makeMixtures(const Path &tree, int files) {
    constexpr std::size_t size = 30'000'000;
    constexpr std::size_t block = 100'000;
    Random random(2);
    Writer writer(random);
    std::filesystem::create_directories(tree);
    for (int file = 0; file < files; ++file) {
        std::string contents;
        contents.reserve(size);
        while (contents.size() < size) {
            contents += below(random, 10) < 6 ? writer.text(block) : noise(random, block);
        }
        writeFile(tree / ("file " + std::to_string(file) + ".dat"), contents);
    }
}

} // namespace

void makeSmallFiles(const Path &tree) {
    makeTexts(tree, 100);
}

void makeMoreSmallFiles(const Path &tree) {
    makeTexts(tree, 200);
}

void makeLargeFiles(const Path &tree) {
    makeMixtures(tree, 8);
}

void makeMoreLargeFiles(const Path &tree) {
    makeMixtures(tree, 10);
}

void makeTinyFiles(const Path &tree) {
    makeFolders(tree, 1000, [] { return std::string("A few bytes.\n"); });
}

} // namespace stowlark
