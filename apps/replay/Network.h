// Network.h - the network between the participants of a meeting.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "replay/Participant.h"

namespace replay {

// Carries messages to participants, who must outlive it. One thread.
//
// Without a seed it delivers every message at once. With one it is a bad network: messages are
// delayed, duplicated and reordered, but all arrive by the next Flush. The same seed makes the same
// network.
class Network {
 public:
  explicit Network(std::optional<std::uint64_t> seed);

  void Send(Participant& to, const Message& message);

  // Delivers all messages that are still waiting.
  void Flush();

 private:
  struct Delivery {
    Participant* to;
    Message message;
  };

  std::size_t NumberBelow(std::size_t limit);
  void DeliverAny();

  bool lossy;
  std::mt19937_64 random;
  std::vector<Delivery> underWay;
};

}  // namespace replay
