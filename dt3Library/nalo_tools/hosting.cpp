#include "vorn3d/hosting.h"

#include <atomic>
#include <iostream>

namespace VORN3D
{

namespace
{

std::atomic<std::ostream*> pMessageStream{&std::cout};
std::atomic<FatalHandler> fatalHandler{nullptr};

} // namespace

std::ostream* setMessageStream(std::ostream* pStream)
{
    return pMessageStream.exchange(pStream);
}

FatalHandler setFatalHandler(FatalHandler handler)
{
    return fatalHandler.exchange(handler);
}

std::ostream& messages()
{
    if (std::ostream* pStream = pMessageStream.load())
        return *pStream;
    // A stream without a buffer takes everything; one a thread, since it notes the failure.
    thread_local std::ostream nowhere(nullptr);
    return nowhere;
}

void tellFatal(const std::string& message)
{
    if (const FatalHandler handler = fatalHandler.load())
        handler(message.c_str());
}

} // namespace VORN3D
