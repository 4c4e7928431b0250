// Bracket around calls of the host's C interface.
#pragma once

#include <uf.h>

namespace nx {

/// `UF_initialize` on construction and, when that succeeded, `UF_terminate` on destruction. Host's thread. Never
/// throws.
class UfSession {
 public:
    UfSession() : status_(UF_initialize()) {}
    ~UfSession() {
        if (status_ == 0) UF_terminate();
    }
    UfSession(const UfSession&) = delete;
    UfSession& operator=(const UfSession&) = delete;

    /// True when the interface may be used.
    explicit operator bool() const { return status_ == 0; }
    /// What `UF_initialize` returned.
    int status() const { return status_; }

 private:
    int status_;
};

}  // namespace nx
