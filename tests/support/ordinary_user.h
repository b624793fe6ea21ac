#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace stowlark {

/// While it lives, this process has no more rights than an ordinary user.
class OrdinaryUser {
public:
    static constexpr uid_t number = 65534;

    OrdinaryUser()
        : wasRoot_(::geteuid() == 0) {
        if (wasRoot_ && ::seteuid(number) != 0) {
            qFatal("seteuid");
        }
    }
    ~OrdinaryUser() {
        if (wasRoot_ && ::seteuid(0) != 0) {
            qFatal("seteuid");
        }
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool wasRoot_;
};

} // namespace stowlark
