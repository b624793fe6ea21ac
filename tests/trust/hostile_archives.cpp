#include "trust/hostile_archives.h"

#include "support/test_folder.h"

namespace stowlark {
namespace {

const QByteArray sentinel = "../../watched/sentinel";
const QByteArray victim = sentinel + "/victim";

Item link(const QByteArray &name, const QByteArray &target) {
    return {name, target, S_IFLNK | 0777U};
}

Item hardLink(const QByteArray &name, const QByteArray &target) {
    return {name, target, S_IFREG | 0644U, true};
}

Item folder(const QByteArray &name) {
    return {name, {}, S_IFDIR | 0755U};
}

Item evil(const QByteArray &name) {
    return {name, "evil"};
}

Kind upwards(const QByteArray &absolute) {
    Kind kind{"../", {}};
    const QByteArray toRoot = QByteArray("../").repeated(40);
    const QByteArrayList names{"../up",
                               "../../up",
                               victim,
                               toRoot + absolute.mid(1),
                               "a/../../../watched/sentinel/victim",
                               "./" + victim,
                               "a/b/../../" + victim,
                               "..\\..\\watched\\sentinel\\victim",
                               "../",
                               "..",
                               ".",
                               "/",
                               "a/..",
                               QByteArray("ok\0/../../up", 12),
                               "C:../../up"};
    for (const QByteArray &name : names) {
        kind.archives.push_back({evil(name), evil("after")});
    }
    kind.archives.push_back({folder(sentinel + "/new"), folder("..")});
    kind.archives.push_back({evil(sentinel + "/new/x")});
    kind.archives.push_back({link(sentinel + "/new", "x")});
    return kind;
}

Kind absolutes(const QByteArray &outside) {
    const QByteArray file = outside + "/victim";
    return {"absolute name",
            {{evil(file)},
             {evil(outside + "/new")},
             {evil("/" + file)},
             {evil("." + file)},
             {evil("//./" + file)},
             {folder(outside + "/new")},
             {evil(outside + "/new/x")},
             {link(outside + "/new", "x")}}};
}

Kind throughLinks(const QByteArray &outside) {
    Kind kind{"through a link", {}};
    for (const QByteArray &target : {sentinel, outside, "./x/../" + sentinel, QByteArray("/..") + outside}) {
        kind.archives.push_back({link("l", target), evil("l/victim")});
        kind.archives.push_back({link("l", target), evil("l/new"), folder("l/folder")});
        kind.archives.push_back({link("l", target), folder("l"), evil("l/victim")});
        kind.archives.push_back({folder("l"), link("l", target), evil("l/victim")});
        kind.archives.push_back({link("l", target + "/victim"), evil("l")});
        kind.archives.push_back({link("l", target + "/dangling"), evil("l")});
        kind.archives.push_back({folder("d"), link("d/l", "../" + target), evil("d/l/victim")});
        kind.archives.push_back({link("l", target), link("l/new", "x"), link("l/victim", "x")});
        kind.archives.push_back({link("l", target), {"l", {}, S_IFDIR | 0777U}});
    }
    kind.archives.push_back({folder("d"), link("a", "d/.."), link("b", "a/.."),
                             link("c", "b/../watched/sentinel"), evil("c/victim")});
    kind.archives.push_back({link("a", ".."), link("a/b", ".."), evil("a/b/watched/sentinel/victim")});
    kind.archives.push_back({evil("l"), link("l", victim), evil("l")});
    return kind;
}

Kind hardLinks(const QByteArray &outside) {
    const QByteArray file = outside + "/victim";
    return {"hard link outward",
            {{hardLink("h", file)},
             {hardLink("h", victim), evil("h")},
             {hardLink("h", file), evil("h")},
             {link("s", outside), hardLink("h", "s/victim"), evil("h")},
             {link("s", victim), hardLink("h", "s"), evil("h")},
             {hardLink("h", "h")},
             {hardLink("h", "../a"), hardLink("i", "..")}}};
}

Kind loops() {
    return {"link loop",
            {{link("a", "b"), link("b", "a"), evil("a/x")},
             {link("a", "a"), evil("a")},
             {folder("d"), link("d/up", ".."), evil("d/up/d/up/d/x")},
             {link("l", "."), evil("l/l/l/l/x"), evil("x")}}};
}

Kind specials() {
    Kind kind{"device, set-uid", {}};
    for (const unsigned mode : {S_IFCHR | 0666U, S_IFBLK | 0666U, S_IFIFO | 0666U}) {
        kind.archives.push_back({{"special", {}, mode}, evil("after")});
        kind.archives.push_back({{"special", {}, mode}, evil("special")});
    }
    kind.archives.push_back({{"program", "#!/bin/sh\n", S_IFREG | 06755U}});
    kind.archives.push_back({{"folder", {}, S_IFDIR | 07777U}, {"nobody", "x", S_IFREG}});
    return kind;
}

Kind oddNames() {
    Kind kind{"odd names", {}};
    for (const char *name : {"\x1b[2J\x1b]0;x\x07",
                             "a\nb\rc",
                             "\x01\x02\x7f",
                             "\xff\xfe\x80",
                             "caf\xe9",
                             "\xed\xa0\x80",
                             "\xc0\xae\xc0\xae/up",
                             "-rf",
                             "--to-command=false",
                             "@list",
                             "$(false)",
                             "`false`",
                             " ",
                             "a\tb",
                             "%s%n%n",
                             "\u202egpj.exe",
                             "*",
                             "CON",
                             "a:b",
                             "<b>x</b>"}) {
        kind.archives.push_back({evil(name), evil(QByteArray("d/") + name)});
    }
    kind.archives.push_back({evil("twice"), evil("twice"), folder("twice"), evil("twice/x")});
    kind.archives.push_back({evil("")});
    kind.archives.push_back({});
    return kind;
}

Items nested(const QByteArray &name) {
    const QByteArray path = (name + '/').repeated(500);
    return {folder(path.chopped(1)), evil(path + "x")};
}

Kind longNames() {
    return {"255 bytes, longer",
            {{evil(QByteArray(255, 'n')), evil(QByteArray("\u65e5").repeated(85))},
             {folder(QByteArray(255, 'd')), evil(QByteArray(255, 'd') + '/' + QByteArray(255, 'n'))},
             {evil(QByteArray(256, 'n'))},
             {evil(QByteArray(5000, 'n'))},
             {evil(QByteArray(40'000, 'n')), evil("after")},
             {link("l", QByteArray(5000, 't')), evil("after")}}};
}

Items emptyFiles(int count) {
    Items items;
    for (int i = 0; i < count; ++i) {
        items.push_back({QByteArray::number(i / 50) + "/" + QByteArray::number(i)});
    }
    return items;
}

} // namespace

std::vector<Kind> hostileKinds(const Path &watched, int many) {
    const QByteArray outside = QByteArray::fromStdString((watched / "sentinel").native());
    return {upwards(outside + "/victim"),
            absolutes(outside),
            throughLinks(outside),
            hardLinks(outside),
            loops(),
            specials(),
            oddNames(),
            longNames(),
            {"500 folders deep", {nested("d"), nested("deep folder")}},
            {"many empty files", {emptyFiles(many)}}};
}

Items ordinaryItems() {
    return {folder("d"),
            {"d/text", someText(3000)},
            {"d/\u65e5\u672c", someText(500, 2)},
            {"d/run", "#!/bin/sh\n", S_IFREG | 0755U},
            link("d/inward", "text"),
            link("outward", sentinel),
            folder("d/e"),
            {"d/e/empty"},
            {"last", someText(1000, 3)}};
}

} // namespace stowlark
