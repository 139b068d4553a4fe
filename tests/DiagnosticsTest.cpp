// Reports, assertions, timer, counters and version.
#include "nalo_tools/SimplePool.h"
#include "nalo_tools/assertion.h"
#include "nalo_tools/log.h"
#include "outcomes.h"
#include "vertexStore/HC3.h"
#include "vorn3d/Vorn_3D.h"

#include <chrono>
#include <cstdio>
#include <stdexcept>
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
    EXPECT_EQ(outputOf([] {
                  logError("A::b()", "c=1");
                  logWarning("A::b()", "c=1");
                  logInfo("A::b()", "c=1");
                  logInfo("c=1");
              }),
              "\n      A::b(), ERROR: c=1\n\n\n      A::b(), WARNING: c=1\n\n\n      A::b(), INFO: c=1\n\n"
              "\n      INFO: c=1\n\n");
    expectEnd([] { goToHell("why"); }, isCrash, "\n      goToHell, ERROR:  reason: why\n\n");
}

TEST(Assertion, ReportsConditionAndPlaceAndThrows)
{
    const int min = 2, max = 1;
    const std::string out = outputOf([&] { EXPECT_THROW(VORN_ASSERT(min < max), VornException); });
    EXPECT_EQ(out, "\n      Vorn, , ERROR: Condition [ min < max failed ]\n\n      " __FILE__ ":" +
                       std::to_string(__LINE__ - 2) + "\n");
    expectThrow([&] { VORN_ASSERT_TEXT(min < max, "min<max"); }, "min<max");
    EXPECT_THAT(
        VornException().what(),
        StartsWith("\n  VORN EXCEPTION due to a bug _or_ wrong usage of Vorn. If you think it is a \n  "));
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

TEST(Timer, CallsOfANameAlternateBetweenStartAndStop)
{
    std::string out = outputOf([] { EXPECT_EQ(timer("a"), -1.0); });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    double seconds = -1;
    out += outputOf([&] { seconds = timer("a"); });
    EXPECT_GE(seconds, 0.03);
    EXPECT_LT(seconds, 30);
    char aSeconds[32];
    std::snprintf(aSeconds, sizeof(aSeconds), "%.3f", seconds);
    EXPECT_EQ(out,
              std::string("\n*** Timer [a] start\n*** Timer [a] stop, elapsed time: ") + aSeconds + " s\n\n");
    EXPECT_EQ(outputOf([] { std::cout << 0.5 << std::defaultfloat; }), "0.500000")
        << "fixed-point notation with precision 6 stays";
    EXPECT_EQ(outputOf([] { EXPECT_EQ(timer("a"), -1.0); }), "\n*** Timer [a] start\n");
}

TEST(Timer, AndCountersServeSeveralNamesAndThreads)
{
    const auto work = [](const std::string& name) {
        for (int n = 0; n < 500; ++n)
            for (std::string event : {"X", "AB"})
                benchCounter(event);
        timer(name + " outer");
        timer(name + " inner");
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        EXPECT_GE(timer(name + " outer"), 0.005);
        EXPECT_GE(timer(name + " inner"), 0.005);
    };
    const std::string out = outputOf([&] {
        std::vector<std::thread> vThreads;
        for (const char* name : {"a", "b", "c", "d"})
            vThreads.emplace_back(work, name);
        for (std::thread& thread : vThreads)
            thread.join();
    });
    for (const char* name : {"a inner", "b outer", "c inner", "d outer"})
        EXPECT_THAT(out, HasSubstr(std::string("\n*** Timer [") + name + "] start\n"));
    for (int n = 0; n < 2; ++n) { // printing neither resets nor counts
        std::string query = "GETCOUNTERS";
        EXPECT_EQ(outputOf([&] { benchCounter(query); }), "\nCounters: \nAB\t2000\nX\t2000\n\n");
    }
}

TEST(Hosting, SendsAllTextWhereTheHostWantsIt)
{
    const auto speak = [] {
        Vorn_3D dt;
        std::vector<Point3> vPoints = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        dt.insert(vPoints);
        dt.print("mesh");
        timer("hosted");
        timer("hosted");
        EXPECT_THROW(VORN_ASSERT(vPoints.empty()), VornException);
    };
    std::ostringstream collected;
    std::ostream* pEarlier = setMessageStream(&collected);
    EXPECT_EQ(outputOf(speak), "");
    for (const char* text : {"numPoints=4", "Dt3::print(mesh)", "Timer [hosted] stop", "vPoints.empty()"})
        EXPECT_THAT(collected.str(), HasSubstr(text));
    EXPECT_EQ(setMessageStream(nullptr), &collected);
    EXPECT_EQ(outputOf(speak), "");
    EXPECT_EQ(setMessageStream(pEarlier), nullptr);
    EXPECT_THAT(outputOf(speak), HasSubstr("numPoints=4"));
}

TEST(Hosting, TellsTheHandlerInPlaceOfEndingTheProcess)
{
    const FatalHandler earlier =
        setFatalHandler([](const char* message) { throw std::runtime_error(message); });
    const auto getMessage = [](auto&& end) -> std::string {
        const CapturedOutput output;
        try {
            end();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "nothing";
    };
    Vorn_3D dt;
    EXPECT_EQ(getMessage([&] { dt.show("no/such/directory.list", nullptr); }),
              "no/such/directory.list not open");
    EXPECT_EQ(getMessage([] { goToHell("why"); }), "why");
    EXPECT_THAT(getMessage([] { HC3(28); }),
                HasSubstr(bDiagnostic ? "Assertion `false'" : "invalid bitlength"));
    SimplePool<Tet3> pool;
    pool.init(2, -1);
    Tet3* pTet = pool.newElement();
    Point3 aPoint[4] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    pTet->setProperties(&aPoint[0], &aPoint[1], &aPoint[2], &aPoint[3]);
    EXPECT_THAT(getMessage([&] { pTet->getIntraTetIndex(pTet); }), HasSubstr("went wrong"));
    setFatalHandler(earlier);
}

TEST(Version, NamesTheConfiguration)
{
    EXPECT_EQ(isRelease(), !bDiagnostic);
    EXPECT_EQ(getVorn3DVersion(), isRelease() ? "Vorn3D, RELEASE, v0.99.0" : "Vorn3D, DEBUG, v0.99.0");
    EXPECT_EQ(getMajorVersionNumber() * 1000000 + getMinorVersionNumber() * 1000 + getRevisionNumber(),
              99000);
}

} // namespace

} // namespace VORN3D
