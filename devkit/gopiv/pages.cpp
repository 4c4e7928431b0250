#include "pages.h"

namespace gopiv::pages {
namespace {

using nlohmann::json;

std::string escaped(const std::string& text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            case '\'':
                html += "&#39;";
                break;
            default:
                html += c;
        }
    }
    return html;
}

/// A member as text: a string's own, a number's digits, nothing for null.
std::string memberText(const json& object, const char* name) {
    const json value = object.value(name, json());
    if (value.is_null()) {
        return "";
    }
    return escaped(value.is_string() ? value.get<std::string>() : value.dump());
}

std::string document(const std::string& title, const std::string& body) {
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
           escaped(title) +
           " - Pivra development service</title>\n<style>\n"
           "body { font: 1rem/1.5 system-ui, sans-serif; color: #1b2733; max-width: 50rem; margin: 3rem auto; "
           "padding: 0 1rem; }\n"
           "th, td { text-align: left; vertical-align: top; padding: 0.3rem 1.2rem 0.3rem 0; "
           "border-bottom: 1px solid #c3ccd5; overflow-wrap: anywhere; }\n"
           "button { font: inherit; padding: 0.5rem 1.5rem; margin-right: 1rem; border: 1px solid #1d5fa8; "
           "border-radius: 4px; background: #fff; color: #1d5fa8; }\n"
           "button.main { background: #1d5fa8; color: #fff; }\n"
           "footer { margin-top: 3rem; color: #52616f; }\n</style>\n</head>\n<body>\n<main>\n<h1>" +
           escaped(title) + "</h1>\n" + body +
           "</main>\n<footer>Embedded development service. Its data stays on this "
           "computer.</footer>\n</body>\n</html>\n";
}

std::string userLabel(const json& user) {
    const std::string name = memberText(user, "givenName") + " " + memberText(user, "familyName");
    const std::string email = memberText(user, "email");
    return name == " " ? email : name + " (" + email + ")";
}

std::string workspaceName(const json& workspace) {
    const std::string name = memberText(workspace, "name");
    return name.empty() ? "(unnamed workspace)" : name;
}

/// The workspace's name, or its number when the service has forgotten it.
std::string workspaceOf(const ServiceData& data, const json& revision) {
    for (const json& workspace : data.workspaces) {
        if (workspace["id"] == revision["workspaceId"]) {
            return workspaceName(workspace);
        }
    }
    return memberText(revision, "workspaceId");
}

std::string revisionTitle(const json& revision) {
    const std::string name = revision["fileName"].is_string() ? revision["fileName"].get<std::string>() : "";
    const json& files = revision["files"];
    return !name.empty() || files.empty() ? name : files.front()["name"].get<std::string>();
}

std::string workspaceSection(const json& workspace, const json& revisions) {
    std::string items;
    for (const json& revision : revisions) {
        if (revision["workspaceId"] == workspace["id"]) {
            const std::string id = memberText(revision, "revisionId");
            items += "<li><a href=\"/models?revisionId=" + id + "\">" + escaped(revisionTitle(revision)) +
                     "</a>, revision " + memberText(revision, "revision") + ", " + memberText(revision, "createdAt") +
                     "</li>\n";
        }
    }
    return "<h2>" + workspaceName(workspace) + "</h2>\n" +
           (items.empty() ? "<p>Nothing has been uploaded yet.</p>\n" : "<ul>\n" + items + "</ul>\n");
}

std::string tableRow(const std::string& cell, const std::initializer_list<std::string>& texts) {
    std::string row = "<tr>";
    for (const std::string& text : texts) {
        row += "<" + cell + ">" + text + "</" + cell + ">";
    }
    return row + "</tr>\n";
}

}  // namespace

std::string signIn(const ServiceData& data, const std::string& clientId, const std::string& ticket) {
    return document(
        "Sign in to Pivra",
        "<p>The program with the client id <b>" + escaped(clientId) + "</b> asks to act for <b>" +
            userLabel(data.user) +
            "</b>.</p>\n<form method=\"post\" action=\"/authorize\">\n"
            "<input type=\"hidden\" name=\"ticket\" value=\"" +
            escaped(ticket) +
            "\">\n<button class=\"main\" type=\"submit\" name=\"decision\" value=\"accept\">Sign in</button>\n"
            "<button type=\"submit\" name=\"decision\" value=\"refuse\">Refuse</button>\n</form>\n");
}

std::string message(const std::string& title, const std::string& text) {
    return document(title, "<p>" + escaped(text) + "</p>\n");
}

std::string overview(const ServiceData& data, const json& revisions) {
    std::string body;
    for (const json& workspace : data.workspaces) {
        body += workspaceSection(workspace, revisions);
    }
    return document("Workspaces", body);
}

std::string revision(const ServiceData& data, const json& revision) {
    std::string rows = tableRow("th", {"File", "File id", "Revision", "Bytes", "SHA-256"});
    for (const json& file : revision["files"]) {
        rows += tableRow("td", {memberText(file, "name"), memberText(file, "fileId"), memberText(file, "revision"),
                                memberText(file, "size"), memberText(file, "sha256")});
    }
    return document(revisionTitle(revision),
                    "<p>Workspace: " + workspaceOf(data, revision) + "<br>\nRevision: " +
                        memberText(revision, "revision") + "<br>\nUploaded: " + memberText(revision, "createdAt") +
                        "</p>\n<table>\n" + rows + "</table>\n<p><a href=\"/\">All workspaces</a></p>\n");
}

}  // namespace gopiv::pages
