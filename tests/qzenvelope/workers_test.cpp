// Work in other processes: what arrives, in which order, and what is told of workers that fail.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <limits>
#include <stdexcept>

#include "apps/qzenvelope/FileNumbers.h"
#include "apps/qzenvelope/JobMessage.h"
#include "apps/qzenvelope/Progress.h"
#include "apps/qzenvelope/WorkerPool.h"

namespace {

using testing::HasSubstr;

struct Log {
    std::vector<std::vector<std::string>> messages;
    std::vector<std::vector<app::WorkerEnd>> ends;
};

Log WorkOff(size_t count, size_t atATime, std::function<void(size_t, const app::Send&)> work,
            size_t tries = 1) {
    Log log;
    log.messages.resize(count);
    log.ends.resize(count);
    app::WorkerPool pool;
    pool.work = std::move(work);
    pool.onMessage = [&](size_t job, const std::string& m) { log.messages[job].push_back(m); };
    pool.onEnd = [&](size_t job, const app::WorkerEnd& end) {
        log.ends[job].push_back(end);
        return !end.isWhole && log.ends[job].size() < tries;
    };
    pool.Run(count, atATime);
    return log;
}

TEST(WorkerPool, EveryMessageArrivesInItsOrder) {
    for (const size_t atATime : {size_t{0}, size_t{1}, size_t{3}, size_t{9}}) {
        const Log log = WorkOff(5, atATime, [](size_t job, const app::Send& send) {
            for (size_t i = 0; i < job * 40; ++i) send(std::to_string(i));
        });
        for (size_t job = 0; job < 5; ++job) {
            ASSERT_EQ(job * 40, log.messages[job].size());
            for (size_t i = 0; i < job * 40; ++i)
                EXPECT_EQ(std::to_string(i), log.messages[job][i]);
            ASSERT_EQ(1u, log.ends[job].size());
            EXPECT_TRUE(log.ends[job][0].isWhole);
        }
    }
}

// Larger than any pipe, empty, and with every byte.
TEST(WorkerPool, MessagesOfAnySizeAndContents) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    const std::string large(3 << 20, 'x');
    const Log log = WorkOff(1, 1, [&](size_t, const app::Send& send) {
        for (const std::string& m : {large, std::string(), bytes, large}) send(m);
    });
    EXPECT_EQ((std::vector<std::string>{large, "", bytes, large}), log.messages[0]);
}

TEST(WorkerPool, HowWorkersFail) {
    const Log log = WorkOff(4, 2, [](size_t job, const app::Send& send) {
        send("sent before");
        if (job == 1) throw std::runtime_error("the drawing is none");
        if (job == 2) throw std::runtime_error("");
        if (job == 3) std::raise(SIGKILL);
    });
    for (const auto& messages : log.messages)
        EXPECT_EQ(std::vector<std::string>{"sent before"}, messages);
    EXPECT_TRUE(log.ends[0][0].isWhole);
    EXPECT_TRUE(!log.ends[1][0].isWhole && log.ends[1][0].isRefusal);
    EXPECT_EQ("the drawing is none", log.ends[1][0].how);
    EXPECT_TRUE(log.ends[2][0].isRefusal);
    EXPECT_EQ("failed without saying why", log.ends[2][0].how);
    EXPECT_FALSE(log.ends[3][0].isWhole || log.ends[3][0].isRefusal);
    EXPECT_THAT(log.ends[3][0].how, HasSubstr("was ended by signal 9"));
}

TEST(WorkerPool, AnotherTryIsAnotherProcess) {
    const Log log = WorkOff(
        3, 2,
        [](size_t job, const app::Send& send) {
            send("again");
            if (job == 1) std::raise(SIGKILL);
        },
        3);
    EXPECT_EQ(1u, log.ends[0].size());
    EXPECT_EQ(3u, log.ends[1].size());
    EXPECT_EQ(3u, log.messages[1].size());
    EXPECT_EQ(1u, log.ends[2].size());
}

TEST(JobMessage, ComesBackAsItWent) {
    app::JobMessage message;
    message.kind = app::JobMessage::ToolEnds;
    message.tool = 7;
    product::ToolResult& tool = message.result;
    tool.id = "d1t7";
    tool.name = "刀 \"7\"\n";
    tool.isComputed = true;
    tool.seconds = 1.0 / 3;
    tool.volume = std::numeric_limits<double>::max();
    tool.offContour = 1e-300;
    tool.findings = {{product::Finding::Kind::Gap, true, "gap", product::Point{1e6 + 0.1, -0.0}},
                     {product::Finding::Kind::Note, false, "", std::nullopt}};
    tool.files = {"out/a b.sat"};
    tool.svg = "<svg/>";
    tool.png = "AAAA";
    const product::ToolResult back = app::MessageFromText(app::ToText(message, true)).result;
    EXPECT_EQ(tool.name, back.name);
    EXPECT_EQ(tool.seconds, back.seconds);
    EXPECT_EQ(tool.volume, back.volume);
    EXPECT_EQ(tool.offContour, back.offContour);
    EXPECT_FALSE(back.betweenHalves);
    ASSERT_EQ(2u, back.findings.size());
    EXPECT_EQ(product::Finding::Kind::Gap, back.findings[0].kind);
    EXPECT_EQ(1e6 + 0.1, back.findings[0].at->x);
    EXPECT_FALSE(back.findings[1].at);
    EXPECT_EQ(tool.files, back.files);
    EXPECT_EQ("<svg/>", back.svg);
    EXPECT_EQ("", app::MessageFromText(app::ToText(message, false)).result.svg);
    EXPECT_EQ(7u, app::MessageFromText(app::ToText(message, false)).tool);
}

TEST(JobMessage, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ((std::vector<std::string>{"a\uFFFDb", ""}),
              app::NamesFromText(app::NamesToText({"a\xFF"
                                                   "b",
                                                   ""})));
    app::JobMessage message;
    message.kind = app::JobMessage::DrawingEnds;
    message.drawing.reason = "\xC3";
    EXPECT_EQ("\uFFFD", app::MessageFromText(app::ToText(message, false)).drawing.reason);
}

TEST(FileNumbers, NoTwoFilesOfOneName) {
    using Names = std::vector<std::string>;
    const struct {
        Names names, files;
        std::vector<size_t> renamed;
    } cases[] = {
        {{"A", "B"}, {"A", "B"}, {}},
        {{"A", "A", "A"}, {"A", "A-2", "A-3"}, {1, 2}},
        {{"a", "A"}, {"a", "A-2"}, {1}},
        {{"A", "A", "A-2"}, {"A", "A-3", "A-2"}, {1}},
        {{"A-2", "A", "A"}, {"A-2", "A", "A-3"}, {2}},
        {{"", "", "A"}, {"", "", "A"}, {}},
        {{"刀", "刀"}, {"刀", "刀-2"}, {1}},
    };
    for (const auto& c : cases) {
        std::vector<size_t> renamed;
        EXPECT_EQ(c.files, app::NumberedNames(c.names, renamed));
        EXPECT_EQ(c.renamed, renamed);
    }
}

TEST(Progress, TheLineNeverWraps) {
    const std::string name(200, 'n');
    for (size_t columns = 0; columns < 140; ++columns)
        for (const size_t done : {0, 5, 10})
            EXPECT_LE(app::Progress::BarText(done, 10, 1, 4000, name, columns).size(),
                      columns > 0 ? columns - 1 : 0);
    EXPECT_EQ("[############............] 5/10 tools, 1 failed, 1:06:40 elapsed, 1:06:40 left  T",
              app::Progress::BarText(5, 10, 1, 4000, "T", 120));
    EXPECT_EQ("[........................] 0/0 tools, 0:00 elapsed",
              app::Progress::BarText(0, 0, 0, 0, "", 80).replace(1, 24, std::string(24, '.')));
}

}  // namespace
