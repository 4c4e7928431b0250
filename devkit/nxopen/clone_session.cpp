#include "clone_session.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "host_text.h"
#include "managed_name.h"

namespace devkit {

namespace {

const std::string numberVariable = "${DB_PART_NO}";

}  // namespace

CloneSession& cloneSession() {
    static CloneSession session;
    return session;
}

int CloneSession::initialise(UF_CLONE_operation_class_t operation) {
    if (active_) return UF_CLONE_err_active;
    if (operation != UF_CLONE_export_operation) return UF_CLONE_err_invalid_setting;
    active_ = true;
    return 0;
}

int CloneSession::setAction(UF_CLONE_action_t action) {
    if (action != UF_CLONE_overwrite && action != UF_CLONE_use_existing) return UF_CLONE_err_invalid_setting;
    action_ = action;
    return 0;
}

int CloneSession::setNameRule(const std::string& rule) {
    if (naming_ != UF_CLONE_naming_rule || rule.empty()) return UF_CLONE_err_invalid_setting;
    nameRule_ = rule;
    return 0;
}

int CloneSession::add(const std::string& encodedName, std::vector<MissingMember>* missing) {
    const bool isRefused = Session::instance().clone.commandLineNames && !isCommandLineName(encodedName);
    const auto item = isRefused ? std::nullopt : decodeManagedName(encodedName);
    PartData* part = item ? Session::instance().findManaged(item->number) : nullptr;
    if (part == nullptr) return UF_CLONE_err_part_not_found;
    parts_.push_back(part);
    if (missing != nullptr) addMembers(*missing);
    return 0;
}

void CloneSession::addMembers(std::vector<MissingMember>& missing) {
    std::set<std::string> seen{parts_.back()->name};
    for (std::size_t next = parts_.size() - 1; next < parts_.size(); ++next) {
        for (const ComponentData& component : parts_[next]->components) {
            if (component.part.empty() || !seen.insert(component.part).second) continue;
            PartData* part = Session::instance().findPart(component.part);
            if (part != nullptr && part->managed) {
                parts_.push_back(part);
            } else {
                missing.push_back({component.part, UF_CLONE_err_comp_not_found});
            }
        }
    }
}

std::string CloneSession::fileName(const PartData& part) const {
    const std::string& rootName = Session::instance().clone.rootName;
    if (!rootName.empty() && &part == parts_.front()) return rootName;
    std::string name = nameRule_;
    const std::size_t variable = name.find(numberVariable);
    if (variable != std::string::npos) name.replace(variable, numberVariable.size(), part.managed->number);
    return name.empty() ? name : name + ".prt";
}

std::vector<const PartData*> CloneSession::unnamed() const {
    std::vector<const PartData*> result;
    std::copy_if(parts_.begin(), parts_.end(), std::back_inserter(result),
                 [this](const PartData* part) { return fileName(*part).empty(); });
    return result;
}

int CloneSession::write(const PartData& part, std::vector<std::string>& written) const {
    const std::string name = fileName(part);
    const std::filesystem::path file = directory_ / pathFromUtf8(name);
    std::error_code ignored;
    if (action_ != UF_CLONE_overwrite && std::filesystem::exists(file, ignored)) return 0;
    std::ofstream out(file, std::ios::binary);
    out << part.content;
    out.close();
    if (!out) return UF_CLONE_err_write_failed;
    written.push_back(name);
    return 0;
}

int CloneSession::perform() const {
    if (parts_.empty()) return UF_CLONE_err_nothing_added;
    if (directory_.empty()) return UF_CLONE_err_invalid_setting;
    int status = 0;
    std::vector<std::string> written;
    for (const PartData* part : parts_) {
        if (Session::instance().clone.writesNothing || fileName(*part).empty()) continue;
        if (const int failure = write(*part, written)) status = failure;
    }
    Session::instance().report("clone", {{"part", parts_.front()->name}, {"files", written}});
    return status;
}

}  // namespace devkit
