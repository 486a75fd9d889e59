#include "base/trap.h"

namespace velora {
namespace {
ErrorSink g_sink = nullptr;
}

ErrorSink setErrorSink(ErrorSink sink) noexcept
{
    return std::exchange(g_sink, sink);
}

void reportError(const char* module, const char* procedure, const char* reason,
                 unsigned long code) noexcept
{
    if (g_sink)
        g_sink({module, procedure, reason, code});
}

void reportCurrentException(const char* module, const char* procedure) noexcept
{
    try {
        throw;
    } catch (const Error& e) {
        reportError(module, procedure, e.what(), e.code());
    } catch (const std::exception& e) {
        reportError(module, procedure, e.what());
    } catch (...) {
        reportError(module, procedure, "unknown exception");
    }
}

} // namespace velora
