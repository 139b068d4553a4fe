// The assertions of the library. Four kinds, told apart at the call site:
//
//   VORN_REQUIRE       what a client must keep to: active in every configuration, reports to the library's
//                      message stream and throws VornException.
//   VORN_ASSERT        an invariant, broken by a fault of the library alone, that costs little to check:
//                      the same in every respect but whose fault it is.
//   VORN_DEBUG_ASSERT  an invariant that the kernel checks on itself: as VORN_ASSERT in the diagnostic
//                      configuration, absent from the release configuration.
//   DEBUG_ASSERT       the small record classes' plain assertion: reports on standard error and aborts in the
//                      diagnostic configuration, absent from the release configuration.
//
// The forms with a text print it in place of the expression's source text, so that a report does not change
// when the source is formatted or a name in it changes. None of them depends on NDEBUG: a client's flags do
// not change what the library checks.
#pragma once

#ifndef VORN3D_DIAGNOSTIC
#error "VORN3D_DIAGNOSTIC must be 0 or 1"
#endif

namespace VORN3D
{

/// True in the diagnostic configuration.
constexpr bool bDiagnostic = VORN3D_DIAGNOSTIC != 0;

/// Reports the failed condition with its place and throws VornException.
[[noreturn]] void failAssertion(const char* condition, const char* file, int line);

/// Reports the failed condition as the platform's assert does and aborts.
[[noreturn]] void failDebugAssertion(const char* condition, const char* file, int line);

} // namespace VORN3D

#define VORN_REQUIRE_TEXT(expr, text)                                                                        \
    (static_cast<bool>(expr) ? void(0) : ::VORN3D::failAssertion(text, __FILE__, __LINE__))
#define VORN_REQUIRE(expr) VORN_REQUIRE_TEXT(expr, #expr)

#define VORN_ASSERT_TEXT(expr, text) VORN_REQUIRE_TEXT(expr, text)
#define VORN_ASSERT(expr) VORN_ASSERT_TEXT(expr, #expr)

#define VORN_DEBUG_ASSERT_TEXT(expr, text)                                                                   \
    (!::VORN3D::bDiagnostic || static_cast<bool>(expr) ? void(0)                                             \
                                                       : ::VORN3D::failAssertion(text, __FILE__, __LINE__))
#define VORN_DEBUG_ASSERT(expr) VORN_DEBUG_ASSERT_TEXT(expr, #expr)

#define DEBUG_ASSERT_TEXT(expr, text)                                                                        \
    (!::VORN3D::bDiagnostic || static_cast<bool>(expr)                                                       \
         ? void(0)                                                                                           \
         : ::VORN3D::failDebugAssertion(text, __FILE__, __LINE__))
#define DEBUG_ASSERT(expr) DEBUG_ASSERT_TEXT(expr, #expr)
