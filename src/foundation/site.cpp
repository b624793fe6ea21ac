#include "foundation/site.h"

namespace stowlark {

QString siteName() {
    return QStringLiteral(STOWLARK_SITE);
}

QUrl siteURL() {
    QUrl url(QStringLiteral("https://" STOWLARK_SITE "/"), QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty()) {
        qFatal("%s is no name of a web site", STOWLARK_SITE);
    }
    return url;
}

} // namespace stowlark
