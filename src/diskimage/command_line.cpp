#include "diskimage/command_line.h"

#include "diskimage/image_error.h"

#include <map>
#include <set>

namespace stowlark {

const char *const usage = R"(Usage:
  stowlark-hdiutil create -volname NAME -srcfolder FOLDER [-ov]
                   -format UDZO|UDBZ [-imagekey zlib-level=1..9] IMAGE
  stowlark-hdiutil attach IMAGE -mountpoint FOLDER [-nobrowse] [-quiet] [-noverify]
  stowlark-hdiutil detach FOLDER [-quiet] [-force]

Makes and unpacks disk images where there is no hdiutil. "attach" mounts nothing:
it unpacks the image into the empty folder, with 7z where it cannot read it by
itself, and "detach" removes what "attach" put there. See stowlark-hdiutil(1).
)";

namespace {

[[noreturn]] void refuse(const QString &what) {
    throw ImageError(what + QStringLiteral("\nTry “stowlark-hdiutil --help”."));
}

QString quoted(const std::string &text) {
    return u'“' + displayText(text) + u'”';
}

/// The arguments after the verb: options, each once and with its value where it takes one, and one operand.
class Arguments {
public:
    Arguments(const std::vector<std::string> &arguments, const std::set<std::string> &withValue,
              const std::set<std::string> &flags) {
        bool hasOperand = false;
        for (auto at = arguments.begin() + 1; at != arguments.end(); ++at) {
            const bool takesValue = withValue.contains(*at);
            if (takesValue || flags.contains(*at)) {
                if (values_.contains(*at)) {
                    refuse(quoted(*at) + QStringLiteral(" is there twice."));
                }
                if (takesValue && at + 1 == arguments.end()) {
                    refuse(QStringLiteral("A value is missing after %1.").arg(quoted(*at)));
                }
                const std::string &option = *at;
                values_[option] = takesValue ? *++at : "";
            } else if (at->starts_with('-') || hasOperand) {
                refuse(QStringLiteral("%1 isn’t understood here.").arg(quoted(*at)));
            } else {
                operand_ = *at;
                hasOperand = true;
            }
        }
        if (operand_.empty()) {
            refuse(QStringLiteral("A path is missing after “%1”.").arg(displayText(arguments.front())));
        }
    }

    const std::string &operand() const { return operand_; }
    bool has(const std::string &option) const { return values_.contains(option); }
    const std::string &value(const std::string &option) const {
        const auto found = values_.find(option);
        if (found == values_.end() || found->second.empty()) {
            refuse(QStringLiteral("%1 is missing, or its value is empty.").arg(quoted(option)));
        }
        return found->second;
    }

private:
    std::map<std::string, std::string> values_;
    std::string operand_;
};

Compression compression(const Arguments &arguments) {
    const std::string &format = arguments.value("-format");
    if (format != "UDZO" && format != "UDBZ") {
        refuse(QStringLiteral("%1 isn’t a format that can be made here.").arg(quoted(format)));
    }
    Compression result;
    result.method = format == "UDBZ" ? Compression::Method::bzip2 : Compression::Method::zlib;
    if (arguments.has("-imagekey")) {
        const std::string &key = arguments.value("-imagekey");
        constexpr std::string_view prefix = "zlib-level=";
        if (!key.starts_with(prefix) || key.size() != prefix.size() + 1 || key.back() < '1' ||
            key.back() > '9' || result.method != Compression::Method::zlib) {
            refuse(QStringLiteral("%1 isn’t understood here.").arg(quoted(key)));
        }
        result.level = key.back() - '0';
    }
    return result;
}

} // namespace

CommandLine parseCommandLine(const std::vector<std::string> &arguments) {
    const std::string verb = arguments.empty() ? "" : arguments.front();
    if (verb == "--help" || verb == "-h" || verb == "help") {
        return HelpCommand{};
    }
    if (verb == "create") {
        const Arguments given(arguments, {"-volname", "-srcfolder", "-format", "-imagekey"}, {"-ov"});
        return CreateCommand{.volumeName = given.value("-volname"),
                             .sourceFolder = given.value("-srcfolder"),
                             .overwrite = given.has("-ov"),
                             .compression = compression(given),
                             .image = given.operand()};
    }
    if (verb == "attach") {
        const Arguments given(arguments, {"-mountpoint"}, {"-nobrowse", "-quiet", "-noverify"});
        return AttachCommand{.image = given.operand(), .mountPoint = given.value("-mountpoint")};
    }
    if (verb == "detach") {
        const Arguments given(arguments, {}, {"-quiet", "-force"});
        return DetachCommand{.mountPoint = given.operand()};
    }
    refuse(verb.empty() ? QStringLiteral("Nothing was asked for.")
                        : QStringLiteral("%1 isn’t something that this program does.").arg(quoted(verb)));
}

} // namespace stowlark
