#include "output/unstoppableWork.h"

#include "ExitStatus.h"
#include "Interruption.h"
#include "Progress.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <iostream>

namespace VORN3D::program
{

namespace
{

std::size_t getSize(const std::string& path)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : static_cast<std::size_t>(size);
}

void showUntilDone(const std::string& label, const std::function<std::size_t()>& getNumBytes,
                   const std::future<void>& result)
{
    constexpr std::chrono::milliseconds interval(50);
    Progress progress(label);
    while (result.wait_for(interval) != std::future_status::ready)
        progress.update(getNumBytes());
    InterruptionWatch::check();
}

void work(const std::string& label, const std::function<std::size_t()>& getNumBytes,
          const std::function<void()>& cleanUp, const std::function<void()>& doWork)
{
    std::future<void> result = std::async(std::launch::async, doWork);
    try {
        showUntilDone(label, getNumBytes, result);
    } catch (const Interrupted& interruption) {
        // The stack cannot be unwound: the work still uses what is on it.
        cleanUp();
        std::cerr << interruption.what() << std::endl;
        std::_Exit(exitInterrupted);
    }
    result.get();
}

} // namespace

void doUnstoppableWork(const std::string& label, OutputFile& file, const std::function<void()>& doWork)
{
    work(
        label, [&] { return getSize(file.getWritablePath()); }, [&] { file.discard(); }, doWork);
}

void doUnstoppableWork(const std::string& label, const std::function<void()>& doWork)
{
    work(
        label, [] { return std::size_t{0}; }, [] {}, doWork);
}

} // namespace VORN3D::program
