// What a call prints, and how it ends the process.
#pragma once

#include "CapturedOutput.h"
#include "vorn3d/VornException.h"
#include "vorn3d/version.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace VORN3D
{

template <typename T>
std::string textOf(const T& value)
{
    std::ostringstream os;
    os << value;
    return os.str();
}

inline std::string addressOf(const void* p)
{
    return textOf(p);
}

/// Expects a failed assertion that throws, and prints the condition.
template <typename F>
void expectThrow(F f, const std::string& condition)
{
    EXPECT_THAT(outputOf([&] { EXPECT_THROW(f(), VornException); }),
                testing::HasSubstr("Condition [ " + condition + " failed ]"));
}

#ifndef __has_feature
#define __has_feature(name) 0
#endif

/// For a process that died by a signal, which sanitizers turn into an exit.
inline bool isCrash(int status)
{
    constexpr bool bSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
    return bSanitized ? status != 0 : WIFSIGNALED(status);
}

/// Expects that f ends the process with a status that fulfils `isExpected`, having printed `text` on either
/// output stream.
template <typename F, typename IsExpected>
void expectEnd(F f, IsExpected isExpected, const std::string& text)
{
    const auto joinStreams = [] { dup2(STDERR_FILENO, STDOUT_FILENO); };
    EXPECT_EXIT((joinStreams(), f()), isExpected, testing::HasSubstr(text));
}

/// Expects exit status 1.
template <typename F>
void expectExit(F f, const std::string& text)
{
    expectEnd(f, testing::ExitedWithCode(1), text);
}

/// Expects a failed plain assertion in the diagnostic configuration; in the release configuration f is not
/// run.
template <typename F>
void expectAbortInDiagnostic(F f, const std::string& condition)
{
    if (!isRelease())
        expectEnd(f, testing::KilledBySignal(SIGABRT), "Assertion `" + condition + "' failed");
}

/// Expects that f prints `text` and stops: by a plain assertion in the diagnostic configuration, with exit
/// status 1 in the release configuration.
template <typename F>
void expectAbortOrExit(F f, const std::string& text)
{
    const auto isExpected = [](int status) {
        return isRelease() ? WIFEXITED(status) && WEXITSTATUS(status) == 1
                           : WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT;
    };
    expectEnd(f, isExpected, text);
}

} // namespace VORN3D
