#include "site.h"

#include <utility>

#include "pages.h"

namespace gopiv {
namespace {

using devkit::fieldValue;
using nlohmann::json;

HttpResponse page(const std::string& html, int status = 200) {
    HttpResponse response;
    response.status = status;
    response.body = html;
    return response;
}

HttpResponse deadEnd(const std::string& text) {
    return page(pages::message("This page leads nowhere", text), 400);
}

HttpResponse notFound() {
    return page(pages::message("Not found", "The development service has no such page."), 404);
}

}  // namespace

Site::Site(std::filesystem::path folder, std::string clientId, SignIns& signIns, std::function<json()> status)
    : folder_(std::move(folder)),
      store_(folder_),
      clientId_(std::move(clientId)),
      signIns_(signIns),
      status_(std::move(status)) {}

HttpResponse Site::answer(const HttpRequest& request) const {
    if (request.path == "/authorize") {
        return request.method == "POST" ? signInAnswer(request) : signInPage(request);
    }
    if (request.path == "/callback") {
        return callback(request);
    }
    if (request.path == "/models") {
        return revisionPage(request);
    }
    if (request.path == "/signed-out") {
        return page(pages::message("You are signed out", "You can close this page."));
    }
    if (request.path == "/dev/status") {
        return statusReport();
    }
    if (request.path == "/") {
        const ServiceData data = readServiceData(folder_);
        return page(pages::overview(data, allRevisions(data, store_)));
    }
    return notFound();
}

HttpResponse Site::signInPage(const HttpRequest& request) const {
    const auto ticket =
        signIns_.pageTicket(fieldValue(request.query, "state"), fieldValue(request.query, "code_challenge"));
    if (!ticket || fieldValue(request.query, "client_id") != clientId_) {
        return deadEnd("This sign-in is unknown or has been answered already. Start the sign-in again from NX.");
    }
    return page(pages::signIn(readServiceData(folder_), clientId_, *ticket));
}

HttpResponse Site::signInAnswer(const HttpRequest& request) const {
    const std::string decision = fieldValue(request.form, "decision");
    if (decision != "accept" && decision != "refuse") {
        return deadEnd("The form carries no decision.");
    }
    const auto answer = signIns_.answer(fieldValue(request.form, "ticket"), decision == "accept");
    if (!answer) {
        return deadEnd("This form has been sent already. Start the sign-in again from NX.");
    }
    const auto outcome =
        answer->code.empty() ? std::pair("error", std::string("access_denied")) : std::pair("code", answer->code);
    HttpResponse response = page("", 302);
    response.location = "/callback?" + devkit::encodeFields({outcome, {"state", answer->state}});
    return response;
}

HttpResponse Site::callback(const HttpRequest& request) const {
    const std::string code = fieldValue(request.query, "code");
    if (!signIns_.finish({fieldValue(request.query, "state"), code})) {
        return deadEnd("This sign-in is unknown or has ended already. Start the sign-in again from NX.");
    }
    return code.empty() ? page(pages::message("Sign-in refused", "You were not signed in. Return to NX."))
                        : page(pages::message("You are signed in", "Return to NX. You can close this page."));
}

HttpResponse Site::revisionPage(const HttpRequest& request) const {
    const ServiceData data = readServiceData(folder_);
    const std::string id = fieldValue(request.query, "revisionId");
    for (const json& revision : allRevisions(data, store_)) {
        if (revision.at("revisionId").dump() == id) {
            return page(pages::revision(data, revision));
        }
    }
    return notFound();
}

HttpResponse Site::statusReport() const {
    json status = status_();
    status["flows"] = signIns_.status();
    return {200, "application/json", status.dump(), ""};
}

json allRevisions(const ServiceData& data, const RevisionStore& store) {
    json revisions = data.revisions;
    for (json& revision : store.revisions()) {
        revisions.push_back(std::move(revision));
    }
    return revisions;
}

}  // namespace gopiv
