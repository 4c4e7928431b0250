#include "host_objects.h"

#include <devkit/live_objects.h>
#include <NXOpen/NXObjectManager.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/TransientObject.hxx>

#include "calls.h"

namespace devkit {

HostObjects& HostObjects::instance() {
    // Never destroyed: objects that outlive it would ask it to forget them.
    static HostObjects& objects = *new HostObjects;
    return objects;
}

NXOpen::BasePart* HostObjects::part(PartData& data) {
    NXOpen::BasePart*& object = parts_[&data];
    if (object == nullptr) object = data.isPart ? make<NXOpen::Part>(data) : make<NXOpen::BasePart>(data);
    return object;
}

tag_t HostObjects::add(NXOpen::TaggedObject& object) {
    byTag_[++lastTag_] = &object;
    return lastTag_;
}

void HostObjects::clear() {
    parts_.clear();
    owned_.clear();
}

LiveObjects& liveObjects() {
    static LiveObjects objects;
    return objects;
}

}  // namespace devkit

namespace NXOpen {

TaggedObject::TaggedObject() : tag_(devkit::HostObjects::instance().add(*this)) {}

TaggedObject::~TaggedObject() {
    devkit::HostObjects::instance().remove(tag_);
}

tag_t TaggedObject::Tag() const {
    return tag_;
}

TransientObject::TransientObject() = default;

TransientObject::~TransientObject() = default;

TaggedObject* NXObjectManager::Get(tag_t tag) {
    if (!devkit::enterForPointer("NXOpen::NXObjectManager::Get") || tag == NULL_TAG) return nullptr;
    auto* object = devkit::HostObjects::instance().find<TaggedObject>(tag);
    if (object == nullptr) devkit::fail("No object has this tag.");
    return object;
}

}  // namespace NXOpen
