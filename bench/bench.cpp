// What the plug-in's work costs next to a baseline, the least that it could cost: the same copies and appends without
// the rest of the work. Both are measured in turns, since a noisy machine slows both, and what counts are the medians;
// tools/bench.py puts them beside their goals.
#include <benchmark/benchmark.h>
#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <support/memory.h>
#include <support/message_loop.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>
#include "config/properties.h"
#include "export/displayed_model_metadata.h"
#include "export/upload_preparation.h"
#include "logging/log.h"
#include "platform/files.h"
#include "platform/text_encoding.h"
#include "service/upload_execution.h"
#include "ui/upload_progress_dialog.h"

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <future>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Action = std::function<void()>;

double secondsOf(const Action& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Counts the seconds of one of the `count` things that `work` does, of the baseline's, and their ratio; which of them
/// comes first changes every time. Files are written over those of the last time: creating and deleting them would
/// measure the file system's bookkeeping.
void inTurns(benchmark::State& state, const Action& work, const Action& baseline, double count = 1) {
    std::vector<double> values;
    std::vector<double> baselines;
    std::vector<double> ratios;
    baseline();
    work();
    for (auto _ : state) {
        const bool isWorkFirst = values.size() % 2 == 1;
        if (isWorkFirst) values.push_back(secondsOf(work));
        baselines.push_back(secondsOf(baseline));
        if (!isWorkFirst) values.push_back(secondsOf(work));
        state.SetIterationTime(values.back());
        ratios.push_back(values.back() / baselines.back());
    }
    state.counters["value"] = median(values) / count;
    state.counters["baseline"] = median(baselines) / count;
    state.counters["ratio"] = median(ratios);
}

/// The stand-in host, with parts whose files lie in a folder of their own.
class Host {
 public:
    static Host& instance() {
        static Host host;
        return host;
    }

    devkit::PartData& addPart(const std::string& name, const std::string& bytes) {
        devkit::PartData part;
        part.name = part.leaf = name;
        part.uniqueIdentifier = "00000000-0000-4000-8000-" + std::to_string(100'000'000'000 + session.parts().size());
        part.fullPath = platform::utf8FromPath(folder.writeFile("models/" + name + ".prt", bytes));
        return session.addPart(part);
    }

    /// An assembly of `partCount` parts, six of them assemblies inside each other, with `components` components: each
    /// of the others is placed equally often.
    void addAssembly(const std::string& name, std::size_t partCount, std::size_t components) {
        constexpr std::size_t depth = 6;
        std::vector<devkit::PartData*> levels;
        for (std::size_t level = 0; level < depth; ++level) {
            levels.push_back(&addPart(name + (level == 0 ? "" : " " + std::to_string(level)), content));
            if (level > 0) levels[level - 1]->components.push_back({"", levels[level]->name, true});
        }
        // One for all assemblies, so that their copies go into one folder.
        levels.front()->uniqueIdentifier = "00000000-0000-4000-8000-000000000000";
        for (std::size_t place = 0; place + depth - 1 < components; ++place) {
            levels[place % depth]->components.push_back(
                {"", "part " + std::to_string(place % (partCount - depth)), true});
        }
    }

    std::shared_ptr<pivra::ModelMetadata> display(const std::string& name) {
        session.setDisplayed(name);
        return pivra::readDisplayedModelMetadata();
    }

    /// The calls of the host until the part is displayed, and until it is prepared.
    std::pair<double, double> callsFor(const std::string& name) {
        auto& interceptor = devkit::CallInterceptor::instance();
        const auto before = interceptor.calls().size();
        const auto metadata = display(name);
        const auto displayed = interceptor.calls().size();
        pivra::prepareUploadFiles(metadata);
        return {displayed - before, interceptor.calls().size() - displayed};
    }

    fs::path copies() const { return folder.path() / "copies"; }

    static constexpr std::size_t parts = 2'000;
    test_support::PluginFolder folder;
    devkit::Session& session = devkit::Session::instance();
    const std::string content = std::string(65'536, 'x');

 private:
    Host() {
        session.reset();
        folder.startLogging("pivra_nx_log_level = info\n");
        config::LoadProperties();
        fs::create_directory(copies());
        for (std::size_t part = 0; part < parts; ++part) addPart("part " + std::to_string(part), content);
        addAssembly("assembly", parts, 20'000);
        addAssembly("large assembly", parts, 200'000);
        addAssembly("half the parts", parts / 2, parts / 2 - 1);
        addAssembly("all parts", parts, parts - 1);
    }
};

/// The most memory that the process has had since the last call, in bytes.
double peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word && word != "VmHWM:";) continue;
    double kilobytes = 0;
    status >> kilobytes;
    std::ofstream("/proc/self/clear_refs") << 5;
    return kilobytes * 1024;
}

void nativePart(benchmark::State& state) {
    auto& host = Host::instance();
    const auto file = platform::pathFromUtf8(host.addPart("huge", "").fullPath);
    std::ofstream stream(file, std::ios::binary);
    for (std::size_t piece = 0; piece < (std::size_t{1} << 30) / host.content.size(); ++piece) stream << host.content;
    stream.close();
    const auto metadata = host.display("huge");
    double memory = 0;
    inTurns(
        state,
        [&] {
            peakMemory();
            const double before = peakMemory();
            pivra::prepareUploadFiles(metadata);
            memory = peakMemory() - before;
        },
        [&] { platform::copyFile(file, host.copies() / "huge.prt"); });
    state.counters["memory"] = memory;
}

void assembly(benchmark::State& state) {
    auto& host = Host::instance();
    const auto metadata = host.display("assembly");
    inTurns(
        state, [&] { pivra::prepareUploadFiles(metadata); },
        [&] {
            for (const auto& entry : metadata->files) {
                const auto file = platform::pathFromUtf8(entry.sourcePath);
                platform::copyFile(file, host.copies() / file.filename());
            }
        });
    state.counters["files"] = static_cast<double>(metadata->files.size());
}

void largeAssembly(benchmark::State& state) {
    auto& host = Host::instance();
    const auto small = host.display("assembly");
    const auto large = host.display("large assembly");
    const auto prepare = [&](const char* name, const auto& metadata) {
        host.session.setDisplayed(name);
        pivra::prepareUploadFiles(metadata);
    };
    inTurns(
        state, [&] { prepare("large assembly", large); }, [&] { prepare("assembly", small); });
}

/// Calls of the host for each component beyond the first of its part, and for each part.
void hostCalls(benchmark::State& state) {
    auto& host = Host::instance();
    for (auto _ : state) {
        const auto [display, preparation] = host.callsFor("assembly");
        const auto [largeDisplay, largePreparation] = host.callsFor("large assembly");
        const auto [halfDisplay, halfPreparation] = host.callsFor("half the parts");
        const auto [allDisplay, allPreparation] = host.callsFor("all parts");
        state.SetIterationTime(1);
        state.counters["component"] = (largeDisplay + largePreparation - display - preparation) / 180'000;
        state.counters["display"] = (allDisplay - halfDisplay) / (Host::parts / 2.0);
        state.counters["preparation"] = (allPreparation - halfPreparation) / (Host::parts / 2.0);
    }
}

[[gnu::noinline]] void emptyCall(std::string_view text) {
    benchmark::DoNotOptimize(text);
}

void filteredLogLine(benchmark::State& state) {
    Host::instance();
    constexpr int lines = 1'000'000;
    const std::string label = "a part";
    std::size_t allocations = 0;
    inTurns(
        state,
        [&] {
            const auto before = test_support::allocations;
            for (int line = 0; line < lines; ++line) {
                logging::LogDebug("A line:", logging::quoted("part", label), logging::flag("managed", true),
                                  logging::number("files", line));
                benchmark::ClobberMemory();
            }
            allocations = test_support::allocations - before;
        },
        [&] {
            for (int line = 0; line < lines; ++line) {
                emptyCall(label);
                benchmark::ClobberMemory();
            }
        },
        lines);
    state.counters["allocations"] = static_cast<double>(allocations);
}

void logLine(benchmark::State& state) {
    auto& host = Host::instance();
    constexpr int lines = 2'000;
    const std::string label(80, 'x');
    const std::string line(label.size() + 90, 'x');
    const auto file = host.folder.path() / "logs" / "plain.log";
    inTurns(
        state,
        [&] {
            for (int i = 0; i < lines; ++i) {
                logging::LogInfo("Prepared NX upload files:", logging::quoted("part", label),
                                 logging::flag("drawing", false), logging::number("files", 1));
            }
        },
        [&] {
            for (int i = 0; i < lines; ++i) platform::appendToFile(file, line);
        },
        lines);
}

/// Ticks of the progress dialog's poll while the upload goes on: allocations and calls of the host for each.
void pollTick(benchmark::State& state) {
    using namespace std::chrono_literals;
    Host::instance();
    test_support::ScriptedHost host;
    std::promise<void> end;
    auto request = std::make_shared<ui::UploadProgressRequest>();
    request->metadata = std::make_shared<pivra::ModelMetadata>();
    request->executeUpload = [uploaded = end.get_future().share()] {
        uploaded.wait();
        return pivra::UploadExecutionResult();
    };
    const auto& calls = devkit::CallInterceptor::instance().calls();
    host.user = [&](test_support::OpenDialog&) {
        test_support::turnMessageLoop(1s);
        const auto allocationsBefore = test_support::allocations;
        const auto callsBefore = calls.size();
        for (auto _ : state) {
            state.SetIterationTime(secondsOf([] { test_support::turnMessageLoop(400ms); }));
        }
        const auto ticks = static_cast<double>(state.iterations());
        state.counters["allocations"] = static_cast<double>(test_support::allocations - allocationsBefore) / ticks;
        state.counters["calls"] = static_cast<double>(calls.size() - callsBefore) / ticks;
        end.set_value();
    };
    ui::showUploadProgressDialog(request);
}

/// Memory of the metadata and of the list to upload, for each file.
void uploadList(benchmark::State& state) {
    constexpr std::size_t files = 100'000;
    for (auto _ : state) {
        const auto before = ::mallinfo2();
        pivra::ModelMetadata metadata;
        const auto seconds = secondsOf([&] {
            for (std::size_t file = 0; file < files; ++file) {
                const auto name = "part " + std::to_string(file) + ".prt";
                metadata.files.push_back({"C:/Users/designer/AppData/Local/Temp/pivra-0123456789abcdef/" + name,
                                          "D:/projects/gearbox/models/" + name, name,
                                          "00000000-0000-4000-8000-" + std::to_string(100'000'000'000 + file), "A"});
            }
        });
        const auto list = pivra::filesToSend(metadata);
        const auto after = ::mallinfo2();
        const auto used = after.uordblks + after.hblkhd - before.uordblks - before.hblkhd;
        state.SetIterationTime(seconds);
        state.counters["memory"] = static_cast<double>(used) / static_cast<double>(list.size());
    }
}

constexpr int turns = 25;  // a disk's times differ by a tenth and more

BENCHMARK(nativePart)->UseManualTime()->Iterations(turns);
BENCHMARK(assembly)->UseManualTime()->Iterations(turns);
BENCHMARK(largeAssembly)->UseManualTime()->Iterations(turns);
BENCHMARK(hostCalls)->UseManualTime()->Iterations(1);
BENCHMARK(filteredLogLine)->UseManualTime()->Iterations(turns);
BENCHMARK(logLine)->UseManualTime()->Iterations(turns);
BENCHMARK(pollTick)->UseManualTime()->Iterations(20);
BENCHMARK(uploadList)->UseManualTime()->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
