#pragma once

#include <QString>
#include <QUrl>

namespace stowlark {

/// The maker's web site, which is a setting of the build: its name, as "stowlark.example", and its address.
QString siteName();
QUrl siteURL();

} // namespace stowlark
