#pragma once

#include "app/invocation.h"
#include "app/stowlark_app.h"

#include <memory>

namespace stowlark {

/// How the application and the programs around it reach each other. One source per system.
class OtherPrograms {
public:
    OtherPrograms();
    ~OtherPrograms();

    /// Whether the instance that runs already took the invocation; if not, this is the one to go on.
    bool handOver(const Invocation &invocation);

    /// From now on others reach `program`, which must outlive this.
    void serve(StowlarkApp &program);

private:
    struct Link;
    std::unique_ptr<Link> link_;
};

} // namespace stowlark
