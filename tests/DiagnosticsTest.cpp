// Reports, assertions, timer, counters and version.
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "outcomes.h"
#include "vorn3d/VornException.h"
#include "vorn3d/timer.h"
#include "vorn3d/version.h"

#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace VORN3D
{

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

TEST(Log, EveryReportIsALineBetweenEmptyLines)
{
    EXPECT_EQ(outputOf([] { logError("A::b()", "c=1"); }), "\n      A::b(), ERROR: c=1\n\n");
    EXPECT_EQ(outputOf([] { logWarning("A::b()", "c=1"); }), "\n      A::b(), WARNING: c=1\n\n");
    EXPECT_EQ(outputOf([] { logInfo("A::b()", "c=1"); }), "\n      A::b(), INFO: c=1\n\n");
    EXPECT_EQ(outputOf([] { logInfo("c=1"); }), "\n      INFO: c=1\n\n");
}

TEST(Log, FatalStopReportsAndDies)
{
    EXPECT_DEATH((dup2(STDERR_FILENO, STDOUT_FILENO), goToHell("why")),
                 HasSubstr("\n      goToHell, ERROR:  reason: why\n\n"));
}

TEST(Assertion, ReportsConditionAndPlaceAndThrows)
{
    const int min = 2, max = 1;
    int line = 0;
    const std::string out = outputOf([&] {
        line = __LINE__ + 1;
        EXPECT_THROW(VORN_ASSERT(min < max), VornException);
    });
    EXPECT_EQ(out, "\n      Vorn, , ERROR: Condition [ min < max failed ]\n\n      " __FILE__ ":" +
                       std::to_string(line) + "\n");
    EXPECT_THAT(outputOf([&] { EXPECT_THROW(VORN_ASSERT_TEXT(min < max, "min<max"), std::exception); }),
                HasSubstr("Condition [ min<max failed ]"));
    EXPECT_THAT(
        VornException().what(),
        StartsWith("\n  VORN EXCEPTION due to a bug _or_ wrong usage of Vorn. If you think it is a \n  "));
}

TEST(Assertion, IsAnExpressionThatEvaluatesItsConditionOnce)
{
    int numEvaluations = 0;
    if (numEvaluations == 0)
        VORN_ASSERT(++numEvaluations == 1);
    else
        VORN_ASSERT(false);
    EXPECT_EQ(numEvaluations, 1);
}

TEST(Assertion, DebugFormsAreThereInTheDiagnosticConfigurationOnly)
{
    int numEvaluations = 0;
    const auto isFalse = [&] { return ++numEvaluations < 0; };
    const auto fail = [&] { DEBUG_ASSERT(isFalse()); };
    const std::string place = std::string(__FILE__ ":") + std::to_string(__LINE__ - 1);
    if constexpr (bDiagnostic) {
        outputOf([&] { EXPECT_THROW(VORN_DEBUG_ASSERT(isFalse()), VornException); });
        EXPECT_EQ(numEvaluations, 1);
        expectEnd(fail, testing::KilledBySignal(SIGABRT), place + ": Assertion `isFalse()' failed.\n");
    } else {
        VORN_DEBUG_ASSERT(isFalse());
        fail();
        EXPECT_EQ(numEvaluations, 0);
    }
}

TEST(Assertion, OutputBeforeAnAbortIsNotLost)
{
    const auto printAndFail = [] {
        std::cout << "last words";
        failDebugAssertion("condition", "file", 1);
    };
    expectEnd(printAndFail, testing::KilledBySignal(SIGABRT), "last words");
}

/// Standard output's number format as it was before.
class TimerTest : public testing::Test
{
protected:
    void TearDown() override { std::cout.copyfmt(m_format); }

private:
    const std::ios m_format{nullptr};
};

TEST_F(TimerTest, CallsOfANameAlternateBetweenStartAndStop)
{
    EXPECT_EQ(outputOf([] { EXPECT_EQ(timer("a"), -1.0); }), "\n*** Timer [a] start\n");
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    double seconds = -1;
    const std::string out = outputOf([&] { seconds = timer("a"); });
    EXPECT_GE(seconds, 0.03);
    EXPECT_LT(seconds, 30);
    char aSeconds[32];
    std::snprintf(aSeconds, sizeof(aSeconds), "%.3f", seconds);
    EXPECT_EQ(out, std::string("*** Timer [a] stop, elapsed time: ") + aSeconds + " s\n\n");
    EXPECT_EQ(outputOf([] { std::cout << 0.5; }), "0.500000")
        << "fixed-point notation with precision 6 stays";
    EXPECT_EQ(outputOf([] { EXPECT_EQ(timer("a"), -1.0); }), "\n*** Timer [a] start\n");
    outputOf([] { timer("a"); });
}

TEST_F(TimerTest, TimersAndCountersServeSeveralNamesAndThreads)
{
    const auto work = [](const std::string& name) {
        std::string event = "event";
        for (int n = 0; n < 500; ++n)
            benchCounter(event);
        timer(name + " outer");
        timer(name + " inner");
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        const double outer = timer(name + " outer");
        const double inner = timer(name + " inner");
        EXPECT_GE(outer, 0.005);
        EXPECT_GE(inner, 0.005);
    };
    const std::string out = outputOf([&] {
        std::vector<std::thread> vThreads;
        for (const char* name : {"a", "b", "c", "d"})
            vThreads.emplace_back(work, name);
        for (std::thread& thread : vThreads)
            thread.join();
    });
    for (const char* line : {"a inner", "b outer", "c inner", "d outer"})
        EXPECT_THAT(out, HasSubstr(std::string("\n*** Timer [") + line + "] start\n"));
    std::string query = "GETCOUNTERS";
    EXPECT_THAT(outputOf([&] { benchCounter(query); }), HasSubstr("\nevent\t2000\n"));
}

TEST(BenchCounter, PrintsAllCountsByName)
{
    // Capitals come first, so that the counters of other tests of this process do not stand in between.
    std::string query = "GETCOUNTERS";
    EXPECT_EQ(outputOf([] {
                  for (std::string name : {"X", "B", "X", "AB", "X"})
                      benchCounter(name);
              }),
              "");
    const std::string out = outputOf([&] { benchCounter(query); });
    EXPECT_THAT(out, StartsWith("\nCounters: \nAB\t1\nB\t1\nX\t3\n"));
    EXPECT_THAT(out, testing::EndsWith("\n\n"));
    EXPECT_EQ(outputOf([&] { benchCounter(query); }), out) << "printing neither resets nor counts";
}

TEST(Version, NamesTheConfiguration)
{
    EXPECT_EQ(isRelease(), !bDiagnostic);
    EXPECT_EQ(getVorn3DVersion(), bDiagnostic ? "Vorn3D, DEBUG, v0.99.0" : "Vorn3D, RELEASE, v0.99.0");
    EXPECT_EQ(getMajorVersionNumber(), 0);
    EXPECT_EQ(getMinorVersionNumber(), 99);
    EXPECT_EQ(getRevisionNumber(), 0);
}

} // namespace

} // namespace VORN3D
