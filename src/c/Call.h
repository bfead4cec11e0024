// How every function of the C interface runs: null handles told, exceptions turned into codes,
// texts that come back put in the host's lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <new>
#include <string>
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

// A mark's handle is its address: marks that a page made have no room for anything else.
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

// A number that cannot be negative, as a result.
inline std::int32_t Number(std::size_t count) {
  return count < INT32_MAX ? static_cast<std::int32_t>(count) : INT32_MAX;
}

// Runs `operation` and gives its result; for what it throws a code, and the lists are emptied. They
// are emptied no earlier: the operation's arguments may point into them.
template <class Operation>
std::int32_t Guarded(const Operation& operation, TextLists results = {}) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    Empty(results);
    return PARCHLET_NO_MEMORY;
  } catch (...) {
    Empty(results);
    return PARCHLET_FAILED;
  }
}

inline std::int32_t BadArgument(TextLists results = {}) {
  Empty(results);
  return PARCHLET_BAD_ARGUMENT;
}

// Runs `operation` on the engine.
template <class Operation>
std::int32_t OnEngine(ParchletEngine* engine, const Operation& operation, TextLists results = {}) {
  if (engine == nullptr) {
    return BadArgument(results);
  }
  return Guarded([&] { return operation(engine->engine); }, results);
}

// Runs `operation` on the mark.
template <class Handle, class Operation>
std::int32_t OnMark(Handle* mark, const Operation& operation, TextLists results = {}) {
  if (mark == nullptr) {
    return BadArgument(results);
  }
  return Guarded([&] { return operation(*MarkOf(mark)); }, results);
}
