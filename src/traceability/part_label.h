// How every log line and message names a part.
#pragma once

#include <string>

namespace NXOpen {
class BasePart;
}

namespace pivra {

/// "<null part>" for null; the full path, a blank and the leaf name in parentheses; the one of the two that is not
/// empty; or "<unnamed NX part>". UTF-8. A name that the host fails to give counts as empty: a log line must not cost
/// what it reports. Host's thread; never throws a host exception.
std::string partLogLabel(NXOpen::BasePart* part);

}  // namespace pivra
