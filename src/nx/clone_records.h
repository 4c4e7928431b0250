// Records that calls of the clone interface fill with memory of the host's.
#pragma once

#include <uf.h>
#include <uf_clone.h>
#include <uf_part.h>

namespace nx {

/// What loading an assembly reported. Goes before the bracket of the C interface does.
class LoadStatus {
 public:
    LoadStatus() = default;
    ~LoadStatus() { UF_PART_free_load_status(&status_); }
    LoadStatus(const LoadStatus&) = delete;
    LoadStatus& operator=(const LoadStatus&) = delete;

    UF_PART_load_status_p_t get() { return &status_; }

 private:
    UF_PART_load_status_t status_{};
};

/// The names that a clone operation could not give.
class NamingFailures {
 public:
    NamingFailures() = default;
    ~NamingFailures() { release(); }
    NamingFailures(const NamingFailures&) = delete;
    NamingFailures& operator=(const NamingFailures&) = delete;

    /// The record without what it held: the host empties a record without freeing anything.
    UF_CLONE_naming_failures_p_t emptied() {
        release();
        return &record_;
    }
    UF_CLONE_naming_failures_p_t get() { return &record_; }

 private:
    void release() {
        UF_free(record_.statuses);
        if (record_.input_names != nullptr) UF_free_string_array(record_.n_failures, record_.input_names);
        if (record_.output_names != nullptr) UF_free_string_array(record_.n_failures, record_.output_names);
        record_ = {};
    }

    UF_CLONE_naming_failures_t record_{};
};

}  // namespace nx
