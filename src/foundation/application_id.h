#pragma once

#include <QString>

namespace stowlark {

/// The application's id, made from the maker's site, as "example.stowlark.Stowlark": the name of its desktop
/// entry, and its name on the session bus.
QString applicationId();

/// The path of its object on the bus, as "/example/stowlark/Stowlark".
QString applicationObjectPath();

} // namespace stowlark
