#include "replay/Network.h"

#include <utility>

namespace replay {

Network::Network(std::optional<std::uint64_t> seed)
    : lossy(seed.has_value()), random(seed.value_or(0)) {}

void Network::Send(Participant& to, const Message& message) {
  if (!lossy) {
    to.Receive(message);
    return;
  }
  constexpr std::size_t kOneInSoManyTwice = 4;
  constexpr std::size_t kMostUnderWay = 40;
  underWay.push_back({&to, message});
  if (NumberBelow(kOneInSoManyTwice) == 0) {
    underWay.push_back({&to, message});
  }
  // Usually keeps kMostUnderWay messages waiting; sometimes delivers almost all of them.
  const std::size_t remaining =
      NumberBelow(kOneInSoManyTwice) == 0 ? NumberBelow(kMostUnderWay) : kMostUnderWay;
  while (underWay.size() > remaining) {
    DeliverAny();
  }
}

void Network::Flush() {
  while (!underWay.empty()) {
    DeliverAny();
  }
}

// Standard distributions return different numbers in different libraries.
std::size_t Network::NumberBelow(std::size_t limit) {
  return static_cast<std::size_t>(random() % limit);
}

void Network::DeliverAny() {
  std::swap(underWay[NumberBelow(underWay.size())], underWay.back());
  const Delivery delivery = std::move(underWay.back());
  underWay.pop_back();
  delivery.to->Receive(delivery.message);
}

}  // namespace replay
