#include "info/info_module.h"

/// Generated with the QML modules.
void qml_register_types_Stowlark_Info();

namespace stowlark {

void useInfoModule(QQmlEngine &engine) {
    qml_register_types_Stowlark_Info();
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
}

} // namespace stowlark
