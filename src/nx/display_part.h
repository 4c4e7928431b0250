// The part that the host displays.
#pragma once

#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>

namespace NXOpen {
class BasePart;
}

namespace nx {

/// The displayed part, or null when there is none, no session or no collection. Host's thread; host exceptions pass.
inline NXOpen::BasePart* displayedPart() {
    NXOpen::Session* session = NXOpen::Session::GetSession();
    NXOpen::PartCollection* parts = session != nullptr ? session->Parts() : nullptr;
    return parts != nullptr ? parts->BaseDisplay() : nullptr;
}

}  // namespace nx
