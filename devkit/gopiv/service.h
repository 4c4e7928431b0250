// The embedded development service of one client: its operations over its folder, and its web pages.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>

#include "http_server.h"
#include "revision_store.h"
#include "service_data.h"
#include "sign_in.h"

namespace gopiv {

/// Where an embedded service listens (0: a free port) and keeps its data.
struct ServiceAddress {
    unsigned short port = 0;
    std::filesystem::path folder;
};

/// Reads "http://127.0.0.1:<port>/?data=<percent-encoded UTF-8 folder>"; absent for any other address.
std::optional<ServiceAddress> parseServiceAddress(const std::string& serverUrl);

/// Operations take the request's members and how they are to misbehave, and give the result. They throw Refusal, or
/// another std::exception, when they fail. Any thread, several at once.
class Service {
 public:
    using Json = nlohmann::json;

    /// `status` gives what /dev/status says of operations; `onPage` is told each page served, without its query.
    Service(ServiceAddress address, std::string clientId, std::function<Json()> status,
            std::function<void(const std::string&)> onPage);

    ServiceData data() const { return readServiceData(address_.folder); }
    SignIns& signIns() { return signIns_; }

    Json authorize(const Json& request, const Misbehaviour& misbehaviour);
    /// Issues the tokens of a sign-in that signIns().wait() has returned for.
    Json complete(const Json& request, const Misbehaviour& misbehaviour);
    Json currentUser(const Json& request, const Misbehaviour& misbehaviour);
    Json logout(const Json& request, const Misbehaviour& misbehaviour);
    Json listWorkspaces(const Json& request, const Misbehaviour& misbehaviour);
    Json findRevision(const Json& request, const Misbehaviour& misbehaviour);
    Json rootDirectory(const Json& request, const Misbehaviour& misbehaviour);
    Json upload(const Json& request, const Misbehaviour& misbehaviour);

    /// Answers a browser, on the server's thread.
    HttpResponse page(HttpRequest& request);

 private:
    HttpResponse signInPage(devkit::Fields& query);
    HttpResponse signInAnswer(devkit::Fields& form);
    HttpResponse callback(devkit::Fields& query);
    HttpResponse overviewPage() const;
    HttpResponse revisionPage(const std::string& id) const;
    HttpResponse statusReport() const;

    std::string origin();
    void requireToken(const Json& request) const;
    Json storeFiles(std::int64_t revisionId, const Json& files, const Misbehaviour& misbehaviour) const;
    Json entriesFor(std::int64_t revisionId, const Misbehaviour& misbehaviour);

    const ServiceAddress address_;
    const std::string clientId_;
    const RevisionStore store_;
    SignIns signIns_;
    const std::function<Json()> status_;
    const std::function<void(const std::string&)> onPage_;
    mutable std::mutex mutex_;
    std::set<std::string> tokens_;        ///< valid access tokens; guarded by the mutex
    std::unique_ptr<HttpServer> server_;  ///< guarded by the mutex; last, so that it stops first
};

}  // namespace gopiv
