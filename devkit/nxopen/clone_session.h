// What a clone session is set to, and the export that it performs. Statuses are those of uf_clone.h.
#pragma once

#include <devkit/session.h>
#include <uf_clone.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace devkit {

/// A member of an assembly that cannot be exported.
struct MissingMember {
    std::string name;
    int status;
};

class CloneSession {
 public:
    bool active() const { return active_; }
    int initialise(UF_CLONE_operation_class_t operation);
    void reset() { *this = CloneSession(); }

    int setAction(UF_CLONE_action_t action);
    void setDirectory(const std::filesystem::path& directory) { directory_ = directory; }
    void setNaming(UF_CLONE_naming_technique_t naming) { naming_ = naming; }
    int setNameRule(const std::string& rule);

    /// Adds the part with that encoded name, and its members when `missing` is given.
    int add(const std::string& encodedName, std::vector<MissingMember>* missing);

    /// The parts that the name rule gives no file name.
    std::vector<const PartData*> unnamed() const;
    /// Writes a file for each named part.
    int perform() const;

 private:
    void addMembers(std::vector<MissingMember>& missing);
    std::string fileName(const PartData& part) const;
    int write(const PartData& part, std::vector<std::string>& written) const;

    bool active_ = false;
    UF_CLONE_action_t action_ = UF_CLONE_default_action;
    UF_CLONE_naming_technique_t naming_ = UF_CLONE_default_naming;
    std::filesystem::path directory_;
    std::string nameRule_;
    std::vector<PartData*> parts_;  ///< the root first
};

CloneSession& cloneSession();

}  // namespace devkit
