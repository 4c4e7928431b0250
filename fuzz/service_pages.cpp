// What browsers send to the embedded service: requests, one after the other. In the input 64 times "S" stands for the
// state of the sign-in that is waiting, and 64 times "C" for the code that the service has given for it.
#include "target.h"

#include <devkit/gopiv/http_answer.h>
#include <devkit/gopiv/service.h>

#include <boost/algorithm/string/replace.hpp>

// Without a socket.
struct gopiv::HttpServer::Loop {};
gopiv::HttpServer::HttpServer(unsigned short, HttpHandler) {}
gopiv::HttpServer::~HttpServer() = default;
unsigned short gopiv::HttpServer::port() const {
    return 0;
}

namespace {

namespace http = boost::beast::http;

constexpr const char* origin = "http://127.0.0.1:4711";
constexpr const char* authority = origin + 7;
constexpr const char* known = R"({"user": {"givenName": "<script>", "familyName": "&", "email": "\""},
    "workspaces": [{"id": 1, "name": "<script>"}],
    "revisions": [{"fileId": "id", "workspaceId": 1, "fileName": "<script>"}]})";

class Visit {
 public:
    void send(std::string input) {
        boost::replace_all(input, std::string(64, 'S'), state_);
        while (!input.empty()) {
            if (!code_.empty()) boost::replace_all(input, std::string(64, 'C'), code_);
            http::request_parser<http::string_body> parser;
            parser.eager(true);
            boost::beast::error_code error;
            input.erase(0, parser.put(boost::asio::buffer(input), error));
            if (error || !parser.is_done()) return;
            checkAnswer(parser.get());
        }
    }

 private:
    std::string stage() { return service_.signIns().status()[0]["state"]; }

    void checkAnswer(const gopiv::RequestMessage& request) {
        const auto before = stage();
        const auto answer = gopiv::answer([this](auto asked) { return service_.page(asked); }, request, authority);
        require(answer.result_int() != 500, "no page fails");
        require(answer.body().find("<script") == std::string::npos, "a page has no scripts");
        const auto sender = request[http::field::origin];
        const bool isForeign = request[http::field::host] != authority || !(sender.empty() || sender == origin);
        require(isForeign == (answer.result_int() == 421 || answer.result_int() == 403), "strangers are refused");
        require(before == stage() || !isForeign, "what is refused changes nothing");
        checkSecrets(devkit::percentDecode(std::string(request.target()) + request.body()), before, answer.body());
        const std::string location(answer[http::field::location]);
        require(location.find_first_of("\r\n") == std::string::npos, "a redirection is one line");
        if (const auto code = location.find("code="); code != std::string::npos) code_ = location.substr(code + 5, 64);
    }

    void checkSecrets(const std::string& asked, const std::string& before, const std::string& page) {
        const bool knowsState = asked.find(state_) != std::string::npos;
        const bool knowsCode = !code_.empty() && asked.find(code_) != std::string::npos;
        require(knowsState || page.find(state_) == std::string::npos, "a page gives no sign-in away");
        require(code_.empty() || page.find(code_) == std::string::npos, "a page shows no code");
        if (before == stage()) return;
        require(knowsState && (before == "waiting" || before == "answered"), "a sign-in changes by its own state");
        require(stage() != "signedIn" || knowsCode, "nobody is signed in without the code");
    }

    gopiv::ServiceAddress address_{0, folder().writeFile("service.json", known).parent_path()};
    gopiv::Service service_{address_, "client", [] { return nlohmann::json::object(); }, {}};
    std::string state_ = service_.signIns().begin();
    std::string code_;
};

}  // namespace

void check(const std::string& input) {
    Visit().send(input);
    const auto address = gopiv::parseServiceAddress(input);
    require(!address || !address->folder.empty(), "a service has a folder");
}
