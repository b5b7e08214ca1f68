#include "apps/qzenvelope/WatchRun.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <utility>

#include "apps/qzenvelope/BatchRun.h"
#include "apps/qzenvelope/InputFiles.h"
#include "apps/qzenvelope/Output.h"
#include "host/dwg/drawing_file.h"
#include "host/sys/file_identity.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;
namespace {

namespace fs = std::filesystem;

constexpr unsigned kBetweenLooks = 1000000;  // microseconds
// A drawing without its end mark is taken as it is after this time.
constexpr std::chrono::seconds kPatience(60);
constexpr std::streamoff kTail = 64;  // bytes that the end mark is looked for in

// How a file looked.
struct Seen {
    std::uintmax_t size = 0;
    fs::file_time_type time;

    bool operator==(const Seen& other) const { return size == other.size && time == other.time; }
};
using Sight = std::map<std::string, Seen>;

Sight LookInto(const std::string& folder, const BatchOptions& options) {
    Sight sight;
    for (const std::string& drawing : DrawingsIn(folder, options.recursive, options.request.out)) {
        std::error_code error, other;
        const Seen seen{fs::file_size(drawing, error), fs::last_write_time(drawing, other)};
        if (!error && !other) sight.emplace(drawing, seen);
    }
    return sight;
}

// The last group of a drawing, text or binary, is the word EOF.
bool HasEndMark(const std::string& drawing) {
    std::ifstream file(drawing, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    std::string tail(static_cast<size_t>((std::clamp)(size, std::streamoff{0}, kTail)), '\0');
    if (!file.seekg(size - static_cast<std::streamoff>(tail.size())) ||
        !file.read(tail.data(), static_cast<std::streamsize>(tail.size())))
        return false;
    return tail.find("EOF") != std::string::npos;
}

bool StandsStill(const std::string& drawing, const Seen& seen, const Sight& before) {
    const auto at = before.find(drawing);
    if (at == before.end() || !(at->second == seen)) return false;
    return host::dwg::IsDwgPath(drawing) || HasEndMark(drawing) ||
           fs::file_time_type::clock::now() - seen.time > kPatience;
}

}  // namespace

void WatchFolder(BatchOptions options) {
    const std::string folder = std::exchange(options.watch, {});
    std::error_code error;
    if (!fs::is_directory(folder, error))
        throw Failure(Fault::Request,
                      "--watch: " + folder + Tr(" is no folder; name one that is there"));
    if (host::IdentityOf(folder) == host::IdentityOf(options.request.out))
        throw Failure(
            Fault::Request,
            "--watch: " + folder + Tr(" is the output folder, too; choose another with --out"));
    if (options.report.empty())
        options.report = (fs::path(options.request.out) / "index.html").string();
    options.request.withPage = true;
    Complain(Tr("watching ") + folder + Tr("; end it with Ctrl-C"));
    Sight before, done;
    std::string told;  // a trouble that stays is told once
    for (;; ::usleep(kBetweenLooks)) {
        try {
            Sight now = LookInto(folder, options), whole;
            for (const auto& [drawing, seen] : now)
                if (StandsStill(drawing, seen, before)) whole.emplace(drawing, seen);
            before = std::move(now);
            if (whole == done) continue;
            done = whole;
            options.inputs.clear();
            for (const auto& [drawing, seen] : whole) options.inputs.push_back(drawing);
            RunBatch(options);
            options.force = false;
            told.clear();
        } catch (const Failure& failure) {
            if (told != failure.what()) Complain(failure.what());
            told = failure.what();
        }
    }
}

}  // namespace app
