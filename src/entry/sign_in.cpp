#include "entry/sign_in.h"

#include "service/system_browser.h"
#include "ui/message_box.h"

namespace entry {

void startSignIn(auth::AuthSession& session, const auth::AuthClientCallbacks& client,
                 const std::function<void()>& openMainDialog) {
    if (session.isInProgress()) session.shutdown();
    switch (session.startSignIn(client, auth::systemCallbacks(session)).status) {
        case auth::SignInStatus::started:
            return ui::ShowInfoMessage(
                "A browser window has been opened for Pivra sign-in. Complete authentication, then click the button "
                "again to open the dialog.");
        case auth::SignInStatus::alreadySignedIn:
            return openMainDialog();
        case auth::SignInStatus::inProgress:
            return ui::ShowInfoMessage(
                "Pivra authentication is already in progress. Finish signing in in the browser, then click the button "
                "again.");
        case auth::SignInStatus::failed:
            // It left a pending message, which the next run shows.
            return;
    }
}

}  // namespace entry
