#include <devkit/presenter.h>

namespace devkit {

namespace {

class SilentPresenter : public Presenter {
 public:
    void show(DialogData& dialog) override {
        dialog.onInitialize();
        dialog.onShown();
        dialog.onClose();
    }
    void changed(DialogData&, BlockData&) override {}
    int messageBox(const std::string&, BoxKind, const std::string&) override { return 1; }
};

SilentPresenter silent;
Presenter* current = &silent;

}  // namespace

void setPresenter(Presenter* presenter) {
    current = presenter != nullptr ? presenter : &silent;
}

Presenter* presenter() {
    return current;
}

}  // namespace devkit
