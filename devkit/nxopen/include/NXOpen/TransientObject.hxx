// Base of everything that its caller deletes.
#pragma once

#include <nxopen_export.h>

namespace NXOpen {

class NXOPEN_EXPORT TransientObject {
 public:
    virtual ~TransientObject();
    TransientObject(const TransientObject&) = delete;
    TransientObject& operator=(const TransientObject&) = delete;

 protected:
    TransientObject();
};

}  // namespace NXOpen
