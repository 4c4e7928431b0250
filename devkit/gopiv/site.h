// What the embedded service serves to a browser.
#pragma once

#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "http_server.h"
#include "revision_store.h"
#include "service_data.h"
#include "sign_in.h"

namespace gopiv {

/// The pages of one service. On the server's thread; refers to the sign-ins, which outlive it.
class Site {
 public:
    /// `status` gives what /dev/status shows beside the sign-ins.
    Site(std::filesystem::path folder, std::string clientId, SignIns& signIns, std::function<nlohmann::json()> status);

    /// Answers one request. Throws Refusal when the service's data cannot be read.
    HttpResponse answer(const HttpRequest& request) const;

 private:
    HttpResponse signInPage(const HttpRequest& request) const;
    HttpResponse signInAnswer(const HttpRequest& request) const;
    HttpResponse callback(const HttpRequest& request) const;
    HttpResponse revisionPage(const HttpRequest& request) const;
    HttpResponse statusReport() const;

    std::filesystem::path folder_;
    RevisionStore store_;
    std::string clientId_;
    SignIns& signIns_;
    std::function<nlohmann::json()> status_;
};

/// The revisions of service.json, then the uploaded ones: oldest first.
nlohmann::json allRevisions(const ServiceData& data, const RevisionStore& store);

}  // namespace gopiv
