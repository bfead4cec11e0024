// What every function of the C interface shares: null handles and exceptions become codes, and
// returned texts go into the host's lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <parchlet/Annotation.h>
#include <parchlet/Parchlet.h>
#include <parchlet/parchlet_c.h>

struct ParchletEngine {
  Parchlet engine;
};

struct ParchletTexts {
  std::vector<std::string> list;
};

using TextLists = std::initializer_list<ParchletTexts*>;

// A mark's handle is its address. A mark that a page created has no room for a wrapper.
inline ParchletMark* HandleOf(Annotation* mark) {
  return reinterpret_cast<ParchletMark*>(mark);
}
inline Annotation* MarkOf(ParchletMark* handle) {
  return reinterpret_cast<Annotation*>(handle);
}
inline const Annotation* MarkOf(const ParchletMark* handle) {
  return reinterpret_cast<const Annotation*>(handle);
}

inline std::string Text(const char* text) {
  return text != nullptr ? std::string(text) : std::string();
}

inline void Replace(ParchletTexts* texts, std::vector<std::string> list) {
  if (texts != nullptr) {
    texts->list = std::move(list);
  }
}

inline void Replace(ParchletTexts* texts, std::string text) {
  if (texts != nullptr) {
    std::vector<std::string> list;
    list.push_back(std::move(text));
    texts->list = std::move(list);
  }
}

// Replaces the list by the text and returns YES, or empties it for an empty text and returns NO.
inline std::int32_t ReplaceIfAny(ParchletTexts* texts, std::string text) {
  if (text.empty()) {
    Replace(texts, std::vector<std::string>());
    return PARCHLET_NO;
  }
  Replace(texts, std::move(text));
  return PARCHLET_YES;
}

inline void Empty(TextLists lists) {
  for (ParchletTexts* texts : lists) {
    if (texts != nullptr) {
      texts->list.clear();
    }
  }
}

template <class Value>
void Write(Value* out, Value value) {
  if (out != nullptr) {
    *out = value;
  }
}

// Returns a count as a result, capped at INT32_MAX: negative results are codes.
inline std::int32_t Number(std::size_t count) {
  return count < INT32_MAX ? static_cast<std::int32_t>(count) : INT32_MAX;
}

// Runs `operation` and returns its result, PARCHLET_YES if it has none. If it throws, empties the
// lists and returns a code. The lists are not emptied before that: the operation's arguments may
// point into them.
template <class Operation>
std::int32_t Guarded(const Operation& operation, TextLists results = {}) {
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<const Operation&>>) {
      operation();
      return PARCHLET_YES;
    } else {
      return operation();
    }
  } catch (const std::bad_alloc&) {
    Empty(results);
    return PARCHLET_NO_MEMORY;
  } catch (...) {
    Empty(results);
    return PARCHLET_FAILED;
  }
}

// Returns the pointer that `make` returns, null if it throws.
template <class Make>
auto OrNull(const Make& make) {
  decltype(make()) made = nullptr;
  Guarded([&] { made = make(); });
  return made;
}

inline std::int32_t BadArgument(TextLists results = {}) {
  Empty(results);
  return PARCHLET_BAD_ARGUMENT;
}

// Runs `operation` on the engine as Guarded does; returns PARCHLET_BAD_ARGUMENT for a null engine.
template <class Operation>
std::int32_t OnEngine(ParchletEngine* engine, const Operation& operation, TextLists results = {}) {
  if (engine == nullptr) {
    return BadArgument(results);
  }
  return Guarded([&] { return operation(engine->engine); }, results);
}

// Runs `find` on the engine; returns the handle of the mark that it returns, null for a null engine
// or if `find` throws.
template <class Find>
ParchletMark* FindMark(ParchletEngine* engine, const Find& find) {
  return engine != nullptr ? HandleOf(OrNull([&] { return find(engine->engine); })) : nullptr;
}

// Runs `operation` on the mark as Guarded does; returns PARCHLET_BAD_ARGUMENT for a null mark.
template <class Handle, class Operation>
std::int32_t OnMark(Handle* mark, const Operation& operation, TextLists results = {}) {
  if (mark == nullptr) {
    return BadArgument(results);
  }
  return Guarded([&] { return operation(*MarkOf(mark)); }, results);
}
