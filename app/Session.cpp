#include "app/Session.h"

namespace tav {

Session::Session(Messages& messages) : messages_(messages) {}

}  // namespace tav
