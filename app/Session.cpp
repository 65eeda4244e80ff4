#include "app/Session.h"

#include "core/Fault.h"

namespace tav {

Session::Session(Messages& messages) : messages_(messages) {}

bool Session::guarded(const std::function<void()>& command)
{
    try {
        command();
        return true;
    } catch (const RuntimeFault& fault) {
        messages_.fault(fault);
        return false;
    }
}

}  // namespace tav
