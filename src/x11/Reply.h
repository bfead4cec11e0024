// Reply.h - a reply, event or error of the X server, freed as XCB wants it.
#pragma once

#include <cstdlib>
#include <memory>

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};

template <class T>
using Reply = std::unique_ptr<T, FreeReply>;
