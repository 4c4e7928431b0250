#include "pages.h"

#include "html.h"

namespace gopiv::pages {
namespace {

using html::document;
using html::escaped;
using nlohmann::json;

constexpr const char* filesStart = R"(<h2 id="files">Files</h2>
<div class="scroll" role="region" aria-labelledby="files" tabindex="0">
<table>
<thead>
<tr>
<th scope="col">File</th>
<th scope="col" class="number">Bytes</th>
<th scope="col">Revision</th>
<th scope="col">File id</th>
<th scope="col">SHA-256</th>
</tr>
</thead>
<tbody>
)";
constexpr const char* filesEnd = R"(</tbody>
</table>
</div>
<nav aria-label="Service"><p><a href="/">All workspaces</a></p></nav>
)";

/// A member as text: a string's own, a number's digits, nothing for null.
std::string memberText(const json& object, const char* name) {
    const json value = object.value(name, json());
    if (value.is_null()) {
        return "";
    }
    return escaped(value.is_string() ? value.get<std::string>() : value.dump());
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
    const json& files = revision["files"];
    for (const json& name : {revision["fileName"], files.empty() ? json() : files.front()["name"]}) {
        if (name.is_string() && name != "") {
            return name.get<std::string>();
        }
    }
    return "(unnamed file)";
}

/// When a revision came, to the minute: its time is "YYYY-MM-DDTHH:MM:SSZ".
std::string timeOf(const json& revision) {
    const std::string time = memberText(revision, "createdAt");
    return "<time datetime=\"" + time + "\">" + time.substr(0, 10) + " " + time.substr(11, 5) + " UTC</time>";
}

/// Digits in groups of three.
std::string grouped(std::string digits) {
    for (std::size_t place = 3; place < digits.size(); place += 4) {
        digits.insert(digits.size() - place, ",");
    }
    return digits;
}

std::string listItem(const json& revision) {
    return "<li><a href=\"/models?revisionId=" + memberText(revision, "revisionId") + "\">" +
           escaped(revisionTitle(revision)) + "</a>, revision " + memberText(revision, "revision") + ", " +
           timeOf(revision) + "</li>\n";
}

std::string workspaceSection(const json& workspace, const json& revisions) {
    std::string items;
    for (const json& revision : revisions) {
        items += revision["workspaceId"] == workspace["id"] ? listItem(revision) : "";
    }
    return "<section>\n<h2>" + workspaceName(workspace) + "</h2>\n" +
           (items.empty() ? "<p>Nothing has been uploaded yet.</p>\n" : "<ul>\n" + items + "</ul>\n") + "</section>\n";
}

std::string fileRow(const json& file) {
    return "<tr><th scope=\"row\">" + memberText(file, "name") + "</th><td class=\"number\">" +
           grouped(memberText(file, "size")) + "</td><td>" + memberText(file, "revision") + "</td><td><code>" +
           memberText(file, "fileId") + "</code></td><td><code>" + memberText(file, "sha256") + "</code></td></tr>\n";
}

std::string facts(const ServiceData& data, const json& revision) {
    return "<dl>\n<dt>Workspace</dt><dd>" + workspaceOf(data, revision) + "</dd>\n<dt>Revision</dt><dd>" +
           memberText(revision, "revision") + "</dd>\n<dt>Uploaded</dt><dd>" + timeOf(revision) + "</dd>\n</dl>\n";
}

}  // namespace

std::string signIn(const ServiceData& data, const std::string& clientId, const std::string& ticket) {
    std::string body = "<p>The program with the client id <strong>" + escaped(clientId) +
                       "</strong> asks to act for <strong>" + userLabel(data.user) + "</strong>.</p>\n";
    body += R"(<form method="post" action="/authorize">
<input type="hidden" name="ticket" value=")" +
            escaped(ticket) + R"(">
<button class="main" type="submit" name="decision" value="accept">Sign in</button>
<button type="submit" name="decision" value="refuse">Refuse</button>
</form>
)";
    return document("Sign in to Pivra", body);
}

std::string message(const std::string& title, const std::string& text) {
    return document(title, "<p>" + escaped(text) + "</p>\n");
}

std::string overview(const ServiceData& data, const json& revisions) {
    std::string sections;
    for (const json& workspace : data.workspaces) {
        sections += workspaceSection(workspace, revisions);
    }
    return document("Workspaces", sections.empty() ? "<p>There are no workspaces.</p>\n" : sections);
}

std::string revision(const ServiceData& data, const json& revision) {
    std::string rows;
    for (const json& file : revision["files"]) {
        rows += fileRow(file);
    }
    return document(revisionTitle(revision), facts(data, revision) + filesStart + rows + filesEnd);
}

}  // namespace gopiv::pages
