// Prints drawing sheets into a PDF file.
#pragma once

#include <NXOpen/Builder.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/PlotSourceBuilder.hxx>

namespace NXOpen {

class NXOPEN_EXPORT PrintPDFBuilder : public Builder {
 public:
    enum ActionOption { ActionOptionNew, ActionOptionOverwrite, ActionOptionAppend, ActionOptionNative };

    explicit PrintPDFBuilder(devkit::PartData& part) : part_(part) {}

    void SetAction(ActionOption action);
    void SetAppend(bool append);
    void SetFilename(const NXString& filename);
    PlotSourceBuilder* SourceBuilder();

    /// Writes the file, one page a sheet. Throws NXException when something is missing or it cannot be written.
    NXObject* Commit() override;

 private:
    ~PrintPDFBuilder() override = default;
    void check() const;

    devkit::PartData& part_;
    ActionOption action_ = ActionOptionNew;
    bool append_ = false;
    NXString filename_;
    PlotSourceBuilder source_;
};

}  // namespace NXOpen
