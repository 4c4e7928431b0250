// The host's objects behind the session's model: made on demand, found by tag, all gone at once when the session is
// reset. They are kept in one flat list, so that assemblies of any depth can be torn down.
#pragma once

#include <devkit/session.h>
#include <NXOpen/BasePart.hxx>

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace devkit {

class HostObjects {
 public:
    static HostObjects& instance();

    /// The part's object, made at the first call.
    NXOpen::BasePart* part(PartData& data);

    /// A new object, owned by the session.
    template <class T, class... Arguments>
    T* make(Arguments&&... arguments) {
        auto object = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        T* result = object.get();
        owned_.push_back(std::move(object));
        return result;
    }

    tag_t add(NXOpen::TaggedObject& object);
    void remove(tag_t tag) { byTag_.erase(tag); }

    /// The object with that tag if it is a T; otherwise null.
    template <class T>
    T* find(tag_t tag) const {
        const auto found = byTag_.find(tag);
        return found == byTag_.end() ? nullptr : dynamic_cast<T*>(found->second);
    }

    void clear();

 private:
    std::unordered_map<tag_t, NXOpen::TaggedObject*> byTag_;
    tag_t lastTag_ = 0;
    std::unordered_map<PartData*, NXOpen::BasePart*> parts_;
    std::vector<std::unique_ptr<NXOpen::TaggedObject>> owned_;
};

/// An object that only the C interface shows, by its tag: what it stands for, of `part`.
template <class Kind>
class TaggedPart : public NXOpen::TaggedObject {
 public:
    explicit TaggedPart(PartData& data) : part(data) {}
    PartData& part;
};

}  // namespace devkit
