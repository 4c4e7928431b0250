#include <devkit/session.h>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>

#include "calls.h"
#include "host_text.h"

namespace NXOpen::Drawings {

NXString DrawingSheet::Name() {
    devkit::enter("NXOpen::Drawings::DrawingSheet::Name");
    if (index_ >= part_.sheets.size()) devkit::fail("The sheet is no longer in its part.");
    return devkit::hostString(part_.sheets[index_]);
}

void DrawingSheet::Open() {
    devkit::enter("NXOpen::Drawings::DrawingSheet::Open");
}

const std::unique_ptr<DrawingSheet>* DrawingSheetCollection::first() {
    while (sheets_.size() < part_.sheets.size()) {
        sheets_.push_back(std::make_unique<DrawingSheet>(part_, sheets_.size()));
    }
    return sheets_.data();
}

DrawingSheetCollection::iterator DrawingSheetCollection::begin() {
    devkit::enter("NXOpen::Drawings::DrawingSheetCollection::begin");
    return iterator(first());
}

DrawingSheetCollection::iterator DrawingSheetCollection::end() {
    return iterator(first() + part_.sheets.size());
}

}  // namespace NXOpen::Drawings
