#include "info/info_module.h"

/// Generated with the QML module.
void qml_register_types_Stowlark_Info();

namespace stowlark {

void registerInfoModule() {
    qml_register_types_Stowlark_Info();
}

} // namespace stowlark
