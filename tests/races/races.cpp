// Sign-in, uploads and log lines on many threads in random order, for ThreadSanitizer: `./dev test races`.
//
// A run's seed decides what the host's thread does, and where each worker pauses, fails or hangs. One run in twenty
// lets its process exit under way. A report is a broken rule, one of the sanitizer, or a process that crashes or hangs.
#include <support/plugin_folder.h>
#include "entry/launch.h"
#include "logging/log.h"
#include "platform/thread.h"
#include "ui/upload_work.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <latch>
#include <map>
#include <random>
#include <thread>
#include <utility>

namespace {

namespace fs = std::filesystem;
using auth::AuthSession;
using auth::SignInStatus;
using test_support::PluginFolder;

/// The seed of the run under way and the reports so far, in memory that all processes share.
struct Tally {
    std::atomic<std::uint64_t> seed{0}, reports{0};
};
Tally& tally = *new (mmap(nullptr, sizeof(Tally), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Tally;

// Takes no memory: the sanitizer calls it, too.
void expect(bool holds, const char* otherwise) {
    if (holds) return;
    ++tally.reports;
    std::fprintf(stderr, "races: run %lu: %s\n", tally.seed.load(), otherwise);
}

/// The decisions of one run, all made on the host's thread.
struct Plan {
    std::mt19937_64 random;
    unsigned below(std::size_t limit) { return static_cast<unsigned>(random() % limit); }
};

/// Lets other threads go first, or does nothing.
void pause(unsigned length) {
    if (length >= 200) return std::this_thread::sleep_for(std::chrono::microseconds(length - 150));
    for (; length > 100; length -= 15) std::this_thread::yield();
}

enum Step : unsigned { preparing, starting, asking, answering, none };

/// A sign-in or an upload, and what happens at its steps.
struct Work {
    const std::string name, failure = name + " failed";
    const cpp_piv::CppPivLocalAuthTokens tokens{"token of " + name, "", ""};
    cpp_piv::CppPivUser user;
    const Step fails, hangs;
    const std::array<unsigned, none> pauses;
    std::latch released{1};
    std::atomic<bool> overtaken{false};  ///< the sign-in may change nothing any more
    std::atomic<bool> begun{false};      ///< the service was asked, or will not be
    int completions = 0;                 ///< of the upload, as the host's thread sees them

    Work(const std::string& kind, std::size_t number, Plan& plan)
        : name(kind + std::to_string(number)),
          fails(std::array{preparing, asking, answering, none, none}[plan.below(5)]),
          hangs(std::array{starting, asking, answering, none, none, none}[plan.below(6)]),
          pauses{plan.below(300), plan.below(300), plan.below(300), plan.below(300)} {
        user.email = name;
    }

    void pass(Step step) {
        if (step >= asking) begun = true;
        pause(pauses[step]);
        if (hangs == step) released.wait();
        if (fails == step) throw std::runtime_error(failure);
    }
    void release() {
        if (!released.try_wait()) released.count_down();
    }
};
using WorkPointer = std::shared_ptr<Work>;

auth::AuthClientCallbacks clientOf(const WorkPointer& signIn) {
    return {[signIn] { return signIn->pass(preparing), "https://login/"; },
            [signIn] { return signIn->pass(asking), signIn->tokens; },
            [signIn](auto&) { return signIn->pass(answering), signIn->user; }, nullptr};
}

std::shared_ptr<ui::UploadProgressRequest> requestOf(const WorkPointer& upload, const AuthSession& session) {
    pivra::WorkspaceServiceCallbacks service;
    service.rootDirectory = [upload](const std::string& token, std::int64_t) {
        expect(token.starts_with("token of sign-in"), "an upload gets a wrong token");
        return upload->pass(asking), cpp_piv::CppPivDirectory{};
    };
    service.upload = [upload](auto&&...) { return upload->pass(answering), cpp_piv::CppPivUploadResult{}; };
    auto request = std::make_shared<ui::UploadProgressRequest>();
    request->metadata = std::make_shared<pivra::ModelMetadata>();
    request->metadata->exportedFile = "part.prt";
    request->prepare = [upload] { upload->pass(preparing); };
    request->executeUpload = [upload, &session, service, metadata = request->metadata] {
        const auto result = pivra::executeUpload(0, {{}}, session, *metadata, service);
        return upload->begun = true, result;
    };
    return request;
}

// The folder has a link for each thread. A listing of it misses some while others end.
const fs::path threads = "/proc/self/task";

/// One run, on the host's thread.
class Run {
 public:
    Run(Plan& plan, const PluginFolder& folder, AuthSession& session, bool leaves)
        : plan_(plan), folder_(folder), session_(session), leaves_(leaves) {}

    void play() {
        folder_.startLogging();
        for (const char* writer : {"writer A", "writer B"}) write(writer, plan_.below(8), plan_.below(300));
        for (unsigned left = 3 + plan_.below(12); left > 0; --left) {
            act(plan_.below(8));
            look();
            for (auto& [upload, state] : dialogs_) poll(*upload, *state);
            pause(plan_.below(300));
        }
    }
    void release() {
        for (const auto& work : works_) work->release();
    }
    void finish() {
        release();
        while (fs::hard_link_count(threads) > threadsBefore_) pause(200);
        for (auto& [upload, state] : dialogs_) expect(poll(*upload, *state), "an upload has no end");
        checkLog();
        look();
        const bool succeeds = signIn_ && signIn_->fails == none;
        expect(isSignedIn_ == succeeds && !session_.isInProgress(), "a sign-in has another end than its worker");
        expect(session_.userEmail() == (succeeds ? signIn_->name : ""), "a wrong user");
        expect(!signIn_ || succeeds || !failure_, "the message of a sign-in is lost");
    }

 private:
    void act(unsigned choice) {
        if (choice <= 1) pressSignIn(add("sign-in"));
        if (choice == 2) signOut();
        if (choice == 3) shutDown();
        if (choice == 4) upload(add("upload"));
        if (choice == 5) dialogs_.clear();
        if (choice == 6) folder_.startLogging(plan_.below(2) == 0 ? "" : "pivra_nx_log_level = info");
        if (choice == 7 && !works_.empty()) works_[plan_.below(works_.size())]->release();
    }
    WorkPointer add(const char* kind) {
        return works_.emplace_back(std::make_shared<Work>(kind, works_.size(), plan_));
    }

    void pressSignIn(const WorkPointer& work) {
        if (session_.isInProgress()) shutDown();
        const auto inWorker = [this, work](const std::function<void()>& task) {
            session_.runInWorker([work, task] {
                work->pass(starting);
                const bool isLate = work->overtaken;
                task();
                expect(!isLate || !work->begun, "the service was asked for a sign-in that was overtaken before");
                throw std::runtime_error("ends in the thread");
            });
        };
        const auto status = session_.startSignIn(clientOf(work), {[](auto&) {}, inWorker}).status;
        if (status == SignInStatus::alreadySignedIn) return;
        expect(status == (work->fails == preparing ? SignInStatus::failed : SignInStatus::started), "a wrong status");
        failure_ = work;
        signIn_ = status == SignInStatus::started ? work : nullptr;
        if (!signIn_) ++log_["[ERROR] [Pivra] Sign-in could not be started: " + work->failure];
    }
    void signOut() {
        // It would wait for a worker that hangs; only a user who is signed in can sign out.
        if (signIn_ && signIn_->hangs != none && !session_.isSignedIn()) return;
        session_.signOut({}, {});
        isSignedIn_ = false;
        overtake();
    }
    void shutDown() {
        session_.shutdown();
        look();
        overtake();
    }
    void overtake() {
        expect(!session_.isInProgress(), "a sign-in that was overtaken is in progress");
        failure_ = nullptr;
        if (signIn_ && !isSignedIn_) std::exchange(signIn_, nullptr)->overtaken = true;
    }
    void look() {
        const auto token = session_.accessToken(), message = session_.takePendingMessage();
        expect(token.empty() ? !isSignedIn_ : signIn_ && token == signIn_->tokens.accessToken, "a wrong token");
        isSignedIn_ = !token.empty();
        if (message.empty()) return;
        const auto work = std::exchange(failure_, nullptr);
        expect(work && message == work->failure, "a wrong message");
    }

    void upload(const WorkPointer& work) {
        const auto state = std::make_shared<ui::ProgressState>();
        for (unsigned times = 1 + plan_.below(2); times > 0; --times) ui::startUpload(requestOf(work, session_), state);
        const bool ends = work->fails != preparing;
        ++log_[ends ? uploadEnd : "[ERROR] [Pivra] Upload preparation failed: " + work->failure];
        while (leaves_ && ends && !work->begun) std::this_thread::yield();  // it reads the session
        dialogs_.emplace_back(work, state);
    }
    static bool poll(Work& upload, ui::ProgressState& state) {
        const auto progress = ui::pollProgress(state);
        upload.completions += progress.completed;
        expect(upload.completions == progress.terminal, "an upload is not complete once, or before its end");
        return progress.terminal;
    }

    void write(const std::string& writer, unsigned lines, unsigned length) {
        const auto text = [writer](unsigned line) { return writer + std::string(150, '.') + std::to_string(line); };
        for (unsigned line = 0; line < lines; ++line) ++log_["[ERROR] [Pivra] " + text(line)];
        platform::runDetached([=] {
            for (unsigned line = 0; line < lines; ++line, pause(length)) logging::LogError(text(line));
        });
    }
    void checkLog() {
        for (const auto& line : folder_.logLines()) {
            if (line.starts_with("[INFO] [Pivra] Log level set to ")) continue;
            --log_[line.find("] Pivra upload ") == std::string::npos ? line : uploadEnd];
        }
        for (const auto& [line, count] : log_) expect(count == 0, ("torn, missing or repeated: " + line).c_str());
        fs::remove(logging::LogFilePath(logging::logFileName));
    }

    const std::string uploadEnd = "the end of an upload";
    Plan& plan_;
    const PluginFolder& folder_;
    AuthSession& session_;
    const bool leaves_;  ///< workers may go on without the session
    const std::uintmax_t threadsBefore_ = fs::hard_link_count(threads);
    std::vector<WorkPointer> works_;
    WorkPointer signIn_, failure_;  ///< whose result counts, and whose failure may be told
    bool isSignedIn_ = false;
    std::vector<std::pair<WorkPointer, std::shared_ptr<ui::ProgressState>>> dialogs_;
    std::map<std::string, int> log_;  ///< lines without their time, and how often they are still to come
};

/// Lets the process exit while workers wait. They go on before their session is destroyed, after that, or never.
[[noreturn]] void exitWhileWorkersRun(Plan& plan, const PluginFolder& folder) {
    static Run* run;
    const auto release = [] { run->release(); };
    const unsigned moment = plan.below(3);
    if (moment == 0) std::atexit(release);
    static const auto own = plan.below(2) == 0 ? std::make_unique<AuthSession>() : nullptr;
    run = new Run(plan, folder, own ? *own : AuthSession::instance(), true);
    run->play();
    if (moment == 1) std::atexit(release);
    if (plan.below(2) == 0) entry::cleanUp();
    std::exit(0);
}

/// Plays the next runs in a process of their own, which one of them may end.
void playInProcess(std::uint64_t last) {
    const PluginFolder folder;
    const auto before = tally.reports.load();
    const pid_t child = fork();
    if (child == 0) {
        std::thread([] {}).join();  // with the first thread the sanitizer starts one that stays
        while (tally.seed < last) {
            alarm(120);  // seconds, then it hangs
            Plan plan{std::mt19937_64(++tally.seed)};
            if (plan.below(20) == 0) exitWhileWorkersRun(plan, folder);
            AuthSession session;
            Run run(plan, folder, session, false);
            run.play();
            run.finish();
        }
        std::exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    expect(status == 0 || tally.reports > before, ("the process ended with status " + std::to_string(status)).c_str());
}

}  // namespace

extern "C" [[gnu::visibility("default")]] void __tsan_on_report(void* /*report*/) {
    expect(false, "ThreadSanitizer");
}

int main(int count, char** arguments) {
    const std::uint64_t runs = count > 1 ? std::stoull(arguments[1]) : 10000;
    const std::uint64_t first = count > 2 ? std::stoull(arguments[2]) : std::random_device()();
    std::fprintf(stderr, "races: %lu runs from seed %lu on\n", runs, first);
    for (tally.seed = first - 1; tally.seed + 1 < first + runs && tally.reports < 20;) playInProcess(first + runs - 1);
    std::printf("races: %lu runs, %lu reports\n", tally.seed - first + 1, tally.reports.load());
    return tally.reports == 0 ? 0 : 1;
}
