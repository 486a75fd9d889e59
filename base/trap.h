#pragma once
// The error trap. Every named procedure runs its body inside trap(): whatever it throws is reported
// with module and procedure through one sink, and the procedure returns its neutral value.
// What is expected to be absent (a window, a file, a value) is no error and is never thrown.
#include <exception>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace velora {

/// An error with the number that the system gave for it (GetLastError, HRESULT; 0 when it has
/// none).
class Error : public std::runtime_error {
public:
    explicit Error(const std::string& reason, unsigned long code = 0)
        : std::runtime_error(reason), code_(code)
    {
    }
    unsigned long code() const noexcept { return code_; }

private:
    unsigned long code_;
};

struct ErrorRecord {
    const char* module;
    const char* procedure;
    const char* reason;
    unsigned long code;
};

/// Where reports go; without one they are dropped. Answers the former sink.
using ErrorSink = void (*)(const ErrorRecord&) noexcept;
ErrorSink setErrorSink(ErrorSink sink) noexcept;

void reportError(const char* module, const char* procedure, const char* reason,
                 unsigned long code = 0) noexcept;

/// Reports the exception that is being handled. Call it from a catch block only.
void reportCurrentException(const char* module, const char* procedure) noexcept;

/// Runs `body` and returns what it returns, or `neutral` when it throws.
/// `__builtin_FUNCTION` names the caller only as a default argument; inside a lambda it would name
/// the lambda's call operator.
template <class Body, class Neutral>
auto trap(const char* module, Body&& body, Neutral neutral,
          const char* procedure = __builtin_FUNCTION()) noexcept
{
    using Result = std::invoke_result_t<Body>;
    try {
        return static_cast<Result>(std::forward<Body>(body)());
    } catch (...) {
        reportCurrentException(module, procedure);
        return static_cast<Result>(std::move(neutral));
    }
}

/// The same for procedures that return nothing.
template <class Body>
void trap(const char* module, Body&& body, const char* procedure = __builtin_FUNCTION()) noexcept
{
    try {
        std::forward<Body>(body)();
    } catch (...) {
        reportCurrentException(module, procedure);
    }
}

} // namespace velora
