#include "host_objects.h"

#include <NXOpen/Part.hxx>
#include <NXOpen/TransientObject.hxx>

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

int& liveObjects() {
    static int count = 0;
    return count;
}

}  // namespace devkit

namespace NXOpen {

TaggedObject::TaggedObject() : tag_(devkit::HostObjects::instance().add(*this)) {}

TaggedObject::~TaggedObject() {
    devkit::HostObjects::instance().remove(tag_);
}

TransientObject::TransientObject() {
    ++devkit::liveObjects();
}

TransientObject::~TransientObject() {
    --devkit::liveObjects();
}

}  // namespace NXOpen
