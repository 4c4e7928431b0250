#include <devkit/session.h>
#include <NXOpen/BasePart.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "calls.h"
#include "host_objects.h"

namespace devkit {

namespace {

std::string leafOf(const PartData& part) {
    if (part.managed) return part.managed->number + "/" + part.managed->revision;
    const std::string name = part.fullPath.substr(part.fullPath.find_last_of("/\\") + 1);
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? name : name.substr(0, dot);
}

}  // namespace

Session& Session::instance() {
    static Session session;
    return session;
}

void Session::reset() {
    HostObjects::instance().clear();
    *this = Session();
}

PartData& Session::addPart(const PartData& part) {
    PartData& added = parts_.emplace_back(part);
    if (added.fullPath.empty() && added.managed)
        added.fullPath = "@DB/" + added.managed->number + "/" + added.managed->revision;
    if (added.leaf.empty()) added.leaf = leafOf(added);
    byName_.emplace(added.name, &added);
    return added;
}

PartData* Session::findPart(const std::string& name) {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

PartData* Session::findManaged(const std::string& number) {
    const auto found = std::find_if(parts_.begin(), parts_.end(),
                                    [&](const auto& part) { return part.managed && part.managed->number == number; });
    return found == parts_.end() ? nullptr : &*found;
}

NXOpen::BasePart* Session::object(const std::string& name) {
    PartData* part = findPart(name);
    return part != nullptr ? HostObjects::instance().part(*part) : nullptr;
}

void Session::report(const std::string& kind, const nlohmann::json& facts) {
    const NeighbourTime time;
    if (onEvent) onEvent(kind, facts);
}

}  // namespace devkit

namespace NXOpen {

Session* Session::GetSession() {
    static Session session;
    return devkit::enterForPointer("NXOpen::Session::GetSession") ? &session : nullptr;
}

PartCollection* Session::Parts() {
    static PartCollection parts;
    return devkit::enterForPointer("NXOpen::Session::Parts") ? &parts : nullptr;
}

BasePart* PartCollection::BaseDisplay() {
    if (!devkit::enterForPointer("NXOpen::PartCollection::BaseDisplay")) return nullptr;
    auto& session = devkit::Session::instance();
    return session.object(session.displayed());
}

}  // namespace NXOpen
