#include "desktop/linux/platform_data.h"

namespace stowlark {
namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN"; // where Qt looks for it
const QString tokenKey = QStringLiteral("activation-token");

} // namespace

QVariantMap platformData() {
    const QByteArray token = qgetenv(tokenVariable);
    return token.isEmpty() ? QVariantMap() : QVariantMap{{tokenKey, QString::fromLatin1(token)}};
}

void takePlatformData(const QVariantMap &data) {
    constexpr int longest = 1024; // tools get no more of an environment than they can take
    const QByteArray token = data.value(tokenKey).toString().toLatin1();
    if (!token.isEmpty() && token.size() <= longest) {
        qputenv(tokenVariable, token);
    }
}

void forgetActivationToken() {
    qunsetenv(tokenVariable);
}

} // namespace stowlark
