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

void showUntilDone(const std::string& label, const std::string& path, const std::future<void>& result)
{
    constexpr std::chrono::milliseconds interval(50);
    Progress progress(label);
    while (result.wait_for(interval) != std::future_status::ready)
        progress.update(getSize(path));
    InterruptionWatch::check();
}

} // namespace

void doUnstoppableWork(const std::string& label, OutputFile& file, const std::function<void()>& work)
{
    std::future<void> result = std::async(std::launch::async, work);
    try {
        showUntilDone(label, file.getWritablePath(), result);
    } catch (const Interrupted& interruption) {
        // The stack cannot be unwound: the work still uses what is on it.
        file.discard();
        std::cerr << interruption.what() << std::endl;
        std::_Exit(exitInterrupted);
    }
    result.get();
}

} // namespace VORN3D::program
