#pragma once

#include <type_traits>

#include "app/base/Error.h"
#include "app/base/UserEvent.h"

/// The one way in which errors are caught.

/// Where a procedure stands in the program, as an error record names it.
struct Where {
    const char* module;
    const char* procedure;
};

/// Records the exception being handled through errLog. Call it from a catch block only.
void recordCurrentException(const Where& where);

/// Runs `body`, the whole of a procedure, as a part of the user's event. When it throws, the error is recorded first;
/// then `afterError` runs, and what it returns is the procedure's result: a roll-back has its place there, after the
/// record. An error inside `afterError` is recorded too and leaves the default result.
template <typename Body, typename AfterError>
auto guarded(const Where& where, Body&& body, AfterError&& afterError) -> std::invoke_result_t<Body> {
    using Result = std::invoke_result_t<Body>;
    const UserEvent::Scope scope;
    try {
        return body();
    } catch (...) {
        recordCurrentException(where);
    }
    try {
        if constexpr (std::is_same_v<std::invoke_result_t<AfterError>, Result>)
            return afterError();
        else
            afterError();
    } catch (...) {
        recordCurrentException(where);
    }
    return Result();
}

/// As above; the result after an error is the type's default: False, empty, no object.
template <typename Body>
auto guarded(const Where& where, Body&& body) -> std::invoke_result_t<Body> {
    return guarded(where, body, [] {});
}

/// Runs `body` and tells whether it came through: for a failure that the user is told of in words of its own, and that
/// is not recorded.
template <typename Body>
bool succeeds(Body&& body) {
    try {
        body();
        return true;
    } catch (const Error&) {
        return false;
    }
}

/// The same where only failures with `number` are foreseen; any other is thrown on.
template <typename Body>
bool succeedsUnless(int number, Body&& body) {
    try {
        body();
        return true;
    } catch (const Error& error) {
        if (error.number() != number)
            throw;
        return false;
    }
}
