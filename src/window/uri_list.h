#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <optional>

/// Lists of the type text/uri-list (RFC 2483), in which programs hand files over: a URL in each line, lines
/// that begin with "#" left out. What is no file of this machine is skipped.
namespace stowlark {

/// The file that a URL names; none if it is no file of this machine. The URL has no slash at its end, so that
/// equal files have equal ones.
std::optional<QUrl> fileOf(const QByteArray &url);

/// The file in the line that begins at `position`, which moves to the next line; none if it names no file.
std::optional<QUrl> nextFile(const QByteArray &uriList, qsizetype &position);

/// The last file of the list; none if there is no file in it.
std::optional<QUrl> lastFile(const QByteArray &uriList);

QByteArray uriList(const QList<QUrl> &urls);

} // namespace stowlark
