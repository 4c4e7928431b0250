// What the service serves to a browser: the templates of pages/, filled in.
#include <boost/algorithm/string/replace.hpp>
#include <kainjow/mustache.hpp>

#include "page_templates.h"
#include "service.h"

namespace gopiv {
namespace {

namespace mustache = kainjow::mustache;
using nlohmann::json;

/// Empty for null.
std::string textOf(const json& value) {
    return value.is_string() ? value.get<std::string>() : value.is_null() ? "" : value.dump();
}

mustache::data templateData(const json& value) {
    if (value.is_object()) {
        mustache::data object(mustache::data::type::object);
        for (const auto& [name, member] : value.items()) object.set(name, templateData(member));
        return object;
    }
    if (value.is_array()) {
        mustache::data list(mustache::data::type::list);
        for (const json& entry : value) list.push_back(templateData(entry));
        return list;
    }
    if (value.is_boolean()) return value.get<bool>();
    return textOf(value);
}

std::string escaped(const std::string& text) {
    return boost::replace_all_copy(mustache::html_escape(text), "&apos;", "&#39;");
}

std::string render(const char* text, const json& values) {
    mustache::mustache page(text);
    page.set_custom_escape(escaped);
    return page.render(templateData(values));
}

/// A whole page with `body` of that template below its heading.
std::string document(const std::string& title, const char* body, const json& values) {
    return render(templates::page, {{"title", title}, {"body", render(body, values)}});
}

/// A member as text, empty when it is missing or null.
std::string memberText(const json& object, const char* name) {
    return textOf(object.value(name, json()));
}

std::string userLabel(const json& user) {
    const std::string name = memberText(user, "givenName") + " " + memberText(user, "familyName");
    const std::string email = memberText(user, "email");
    return name == " " ? email : name + " (" + email + ")";
}

std::string labelOf(const Workspace& workspace) {
    return workspace.name.empty() ? "(unnamed workspace)" : workspace.name;
}

/// `revision` with what its pages show beside its members.
json described(json revision) {
    const std::string time = revision["createdAt"];  // "YYYY-MM-DDTHH:MM:SSZ"
    revision["time"] = time.substr(0, 10) + " " + time.substr(11, 5) + " UTC";
    const json files = revision["files"];
    std::string title = memberText(revision, "fileName");
    title = title.empty() && !files.empty() ? memberText(files.front(), "name") : title;
    revision["title"] = title.empty() ? "(unnamed file)" : title;
    return revision;
}

/// A number with its digits in groups of three.
std::string grouped(const json& number) {
    std::string digits = number.dump();
    for (std::size_t place = 3; place < digits.size(); place += 4) digits.insert(digits.size() - place, ",");
    return digits;
}

HttpResponse message(const std::string& title, const std::string& text, int status = 200) {
    return {document(title, templates::message, {{"text", text}}), status};
}

HttpResponse deadEnd(const std::string& text) {
    return message("This page leads nowhere", text, 400);
}

HttpResponse notFound() {
    return message("Not found", "The development service has no such page.", 404);
}

}  // namespace

HttpResponse Service::page(HttpRequest& request) {
    if (request.path == "/authorize")
        return request.method == "POST" ? signInAnswer(request.fields) : signInPage(request.fields);
    if (request.path == "/callback") return callback(request.fields);
    if (request.path == "/signed-out") return message("You are signed out", "You can close this page.");
    if (request.path == "/") return overviewPage();
    if (request.path == "/models") return revisionPage(request.fields["revisionId"]);
    return request.path == "/dev/status" ? statusReport() : notFound();
}

HttpResponse Service::signInPage(devkit::Fields& query) {
    if (!signIns_.isWaiting(query["state"]))
        return deadEnd("This sign-in is unknown or has been answered already. Start the sign-in again from NX.");
    return {document("Sign in to Pivra", templates::sign_in,
                     {{"clientId", clientId_}, {"user", userLabel(data().user)}, {"state", query["state"]}})};
}

HttpResponse Service::signInAnswer(devkit::Fields& form) {
    const auto code = signIns_.answer(form["state"], form["decision"] == "accept");
    if (!code) return deadEnd("This form has been sent already. Start the sign-in again from NX.");
    devkit::Fields query = {{"state", form["state"]}};
    query[code->empty() ? "error" : "code"] = code->empty() ? "access_denied" : *code;
    return {"", 302, "/callback?" + devkit::encodeFields(query)};
}

HttpResponse Service::callback(devkit::Fields& query) {
    const std::string code = query["code"];
    if (!signIns_.finish(query["state"], code))
        return deadEnd("This sign-in is unknown or has ended already. Start the sign-in again from NX.");
    return code.empty() ? message("Sign-in refused", "You were not signed in. Return to NX.")
                        : message("You are signed in", "Return to NX. You can close this page.");
}

HttpResponse Service::overviewPage() const {
    const ServiceData known = data();
    const json revisions = store_.revisions(known.revisions);
    json workspaces = json::array();
    for (const Workspace& workspace : known.workspaces) {
        json listed = json::array();
        for (const json& revision : revisions)
            if (revision["workspaceId"] == workspace.id) listed.push_back(described(revision));
        workspaces.push_back({{"name", labelOf(workspace)}, {"empty", listed.empty()}, {"revisions", listed}});
    }
    return {document("Workspaces", templates::workspaces, {{"workspaces", workspaces}})};
}

HttpResponse Service::revisionPage(const std::string& id) const {
    const ServiceData known = data();
    for (const json& revision : store_.revisions(known.revisions)) {
        if (revision["revisionId"].dump() == id) {
            json values = described(revision);
            values["workspace"] = revision["workspaceId"];
            for (const Workspace& workspace : known.workspaces)
                if (workspace.id == revision["workspaceId"]) values["workspace"] = labelOf(workspace);
            for (json& file : values["files"]) file["size"] = file.contains("size") ? grouped(file["size"]) : "";
            return {document(values["title"], templates::revision, values)};
        }
    }
    return notFound();
}

HttpResponse Service::statusReport() const {
    json status = status_();
    status["flows"] = signIns_.status();
    return {status.dump(), 200, "", "application/json"};
}

}  // namespace gopiv
