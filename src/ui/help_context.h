// While a dialog of the plug-in is open, the host's help key opens the plug-in's help.
//
// Failures cost one warning line each and never a dialog. Host's thread only.
#pragma once

namespace ui {

/// Loads the help map beside the plug-in and pushes the plug-in's help context. True only when it was pushed, and must
/// then be popped once. Never throws.
bool PushHelpContext() noexcept;

/// Pops the context that PushHelpContext() pushed. Never throws.
void PopHelpContext() noexcept;

/// One dialog's help context: pushed at most once, popped on destruction or by pop() when it was pushed.
class HelpContext {
 public:
    HelpContext() = default;
    ~HelpContext() { pop(); }
    HelpContext(const HelpContext&) = delete;
    HelpContext& operator=(const HelpContext&) = delete;

    void push() noexcept {
        if (!helpContextPushed_) helpContextPushed_ = PushHelpContext();
    }
    void pop() noexcept {
        if (helpContextPushed_) PopHelpContext();
        helpContextPushed_ = false;
    }

 private:
    bool helpContextPushed_ = false;
};

}  // namespace ui
