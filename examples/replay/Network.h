// Network.h - what lies between the participants of a meeting.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "Participant.h"

namespace replay {

// Carries messages to participants, who must outlive it. One thread's own.
//
// Without a seed it hands every message over at once. With one it is a bad network, the same for
// the same seed: messages wait, come twice and overtake each other, but all arrive by the next
// Flush.
class Network {
 public:
  explicit Network(std::optional<std::uint64_t> seed);

  void Send(Participant& to, const Message& message);

  // Hands over everything that is still under way.
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
