// How the stand-in host shows things: real windows, or nothing but a record.
#pragma once

#include <devkit/dialog.h>
#include <nxopen_export.h>

#include <string>

namespace devkit {

enum class BoxKind { error = 0, warning = 1, information = 2, question = 3 };

/// Host's thread. One presenter serves the process.
class Presenter {
 public:
    virtual ~Presenter() = default;
    /// Shows `dialog` modally: calls its initialize and shown handlers, then its update handler for each action of the
    /// user, and returns when it is closed.
    virtual void show(DialogData& dialog) = 0;
    /// A property of a block of an open dialog has changed.
    virtual void changed(DialogData& dialog, BlockData& block) = 0;
    /// Shows a message box modally and returns its answer.
    virtual int messageBox(const std::string& title, BoxKind kind, const std::string& message) = 0;
};

/// Null at first; there must be one before a dialog or a message box is shown.
NXOPEN_EXPORT Presenter*& presenter();

}  // namespace devkit
