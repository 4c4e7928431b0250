// What is printed.
#pragma once

#include <NXOpen/NXObject.hxx>

#include <vector>

namespace NXOpen {

class NXOPEN_EXPORT PlotSourceBuilder : public NXObject {
 public:
    void SetSheets(const std::vector<NXObject*>& sheets);
    /// How many sheets are selected: all that were set.
    void SetSelectedSheets(int count);

    /// What was set; of the stand-in alone.
    const std::vector<NXObject*>& sheets() const { return sheets_; }
    int selectedSheets() const { return selectedSheets_; }

 private:
    std::vector<NXObject*> sheets_;
    int selectedSheets_ = 0;
};

}  // namespace NXOpen
