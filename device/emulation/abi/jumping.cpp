#include "abi/jumping.h"

#if defined(__arm__)

#include <cxxabi.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <typeinfo>
#include <utility>
#include <vector>

#include "abi/adapters.h"
#include "abi/handler_table.h"
#include "abi/named_function.h"
#include "abi/way_out.h"
#include "objc/runtime.h"

namespace varnix::device {

namespace {

/// What a function that handles exceptions puts on its stack, as the device's compilers lay it out.
struct Context {
  Context* previous;
  uint32_t call;           ///< which call is running; afterwards, where to go on
  uint32_t parameters[4];  ///< the exception and the number of its handler
  void* routine;
  const uint8_t* table;
  uint32_t jump[3];  ///< r7, pc and sp
};

/// Numbers of calls: what such a call throws is passed on, and ends the process.
constexpr uint32_t kPassedOn = 0xffffffff, kEndsProcess = 0;

/// An exception on its way through the device's frames.
struct Flight {
  std::exception_ptr exception;
  id object = nullptr;  ///< as the handler sees it
};

thread_local Context* innermost = nullptr;
thread_local std::vector<std::unique_ptr<Flight>> caught;

/// Whether a handler takes it, and if so, as which object.
bool isCaught(Flight& flight, const void* type) {
  void* object = nullptr;
  static_assert(sizeof flight.exception == sizeof object);
  // What was thrown is all that the pointer holds.
  object = *reinterpret_cast<void* const*>(&flight.exception);
  const auto* caughtType = static_cast<const std::type_info*>(type);
  if (!caughtType->__do_catch(flight.exception.__cxa_exception_type(), &object, 1)) return false;
  flight.object = static_cast<id>(object);
  return true;
}

std::optional<Landing> landingIn(const Context& context, Flight& flight) {
  if (context.call == kPassedOn) return {};
  if (context.call == kEndsProcess) std::terminate();
  // Nothing says where a table ends. They are short.
  constexpr size_t kMost = 1 << 16;
  return findLanding(Reader({context.table, kMost}), context.call,
                     [&flight](const void* type) { return isCaught(flight, type); });
}

extern "C" [[noreturn]] void varnix_jump(const uint32_t* jump);

bool hasHandler(Flight& flight) {
  for (const Context* at = innermost; at != nullptr; at = at->previous)
    if (const auto landing = landingIn(*at, flight); landing && landing->selector != 0) return true;
  return false;
}

/// Goes on in the innermost function that handles the exception or cleans up for it. There is one.
[[noreturn]] void jumpToLanding(std::unique_ptr<Flight> flight) {
  for (Context* at = innermost;; at = at->previous) {
    const auto landing = landingIn(*at, *flight);
    if (!landing) continue;
    // Its code leaves the context by itself.
    innermost = at;
    at->call = landing->place;
    at->parameters[0] = reinterpret_cast<uint32_t>(flight.release());
    at->parameters[1] = static_cast<uint32_t>(landing->selector);
    varnix_jump(at->jump);
  }
}

/// Throws on the device's side; on this one, where nothing there handles it.
[[noreturn]] void raise(std::unique_ptr<Flight> flight) {
  if (hasHandler(*flight)) jumpToLanding(std::move(flight));
  innermost = nullptr;
  const std::exception_ptr exception = flight->exception;
  flight.reset();
  std::rethrow_exception(exception);
}

std::unique_ptr<Flight> flightOf(std::exception_ptr exception) {
  auto flight = std::make_unique<Flight>();
  flight->exception = std::move(exception);
  return flight;
}

void enter(Context* context) {
  context->previous = innermost;
  innermost = context;
}

void leave(const Context* context) { innermost = context->previous; }

[[noreturn]] void resume(Flight* flight) { raise(std::unique_ptr<Flight>(flight)); }

void throwObject(id object) {
  auto* function = reinterpret_cast<void (*)(id)>(linuxSymbol("objc_exception_throw"));
  std::exception_ptr thrown;
  try {
    function(object);
  } catch (...) {
    thrown = std::current_exception();
  }
  raise(flightOf(std::move(thrown)));
}

id beginCatch(Flight* flight) {
  caught.emplace_back(flight);
  return flight->object;
}

void endCatch() { caught.pop_back(); }

void throwAgain() { raise(flightOf(caught.back()->exception)); }

std::terminate_handler previousEnd = nullptr;

/// This process's own exceptions end here where nothing above the library's frames handles them:
/// the unwinder cannot pass those.
[[noreturn]] void handleOrEnd() {
  if (const std::exception_ptr exception = std::current_exception();
      exception != nullptr && innermost != nullptr) {
    auto flight = flightOf(exception);
    if (hasHandler(*flight)) {
      abi::__cxa_end_catch();
      jumpToLanding(std::move(flight));
    }
  }
  previousEnd();
  std::abort();
}

}  // namespace

void* exceptionFunction(std::string_view name) {
  static const NamedFunction functions[] = {
      {"_Unwind_SjLj_Register", &enter},      {"_Unwind_SjLj_Resume", &resume},
      {"_Unwind_SjLj_Unregister", &leave},    {"objc_begin_catch", &beginCatch},
      {"objc_end_catch", &endCatch},          {"objc_exception_rethrow", &throwAgain},
      {"objc_exception_throw", &throwObject},
  };
  if (void* function = findFunction(functions, name)) return wayOut(function);
  // The tables are read here; the routine that the device would ask is never called.
  if (name == "__objc_personality_v0") return reinterpret_cast<void*>(&handleOrEnd);
  return nullptr;
}

void offerHandlers() {
  if (std::get_terminate() != &handleOrEnd) previousEnd = std::set_terminate(&handleOrEnd);
}

}  // namespace varnix::device

#else

namespace varnix::device {

void* exceptionFunction(std::string_view) { return nullptr; }
void offerHandlers() {}

}  // namespace varnix::device

#endif
