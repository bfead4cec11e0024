#include "platform/image/PngParts.h"

#include "platform/image/ContainerReader.h"
#include "platform/image/Limits.h"

namespace {

constexpr std::size_t kSignatureSize = 8;
constexpr std::size_t kHeaderSize = 13;
constexpr std::uint32_t kMaxChunkSize = 0x7FFFFFFF;
// Deflate packs at most 258 bytes into 2 bits.
constexpr std::uint64_t kMaxInflation = 1032;

enum ColorType : std::uint32_t {
  kGrey = 0,
  kColor = 2,
  kPalette = 3,
  kGreyAlpha = 4,
  kColorAlpha = 6
};

constexpr std::uint32_t Name(const char (&text)[5]) {
  std::uint32_t name = 0;
  for (int i = 0; i < 4; ++i) {
    name = name << 8 | static_cast<unsigned char>(text[i]);
  }
  return name;
}

constexpr std::array<std::uint32_t, 256> MakeCheckTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) {
      value = value >> 1 ^ ((value & 1) != 0 ? 0xEDB88320U : 0);
    }
    table[i] = value;
  }
  return table;
}

// The sum that every chunk ends with.
std::uint32_t CheckSum(std::span<const std::byte> bytes) {
  static constexpr auto kTable = MakeCheckTable();
  std::uint32_t sum = 0xFFFFFFFF;
  for (const std::byte byte : bytes) {
    sum = kTable[(sum ^ std::to_integer<std::uint32_t>(byte)) & 0xFF] ^ sum >> 8;
  }
  return ~sum;
}

struct Chunk {
  std::uint32_t name = 0;
  std::span<const std::byte> data;
  std::span<const std::byte> whole;
  bool isIntact = false;
};

std::optional<Chunk> TakeChunk(ContainerReader& reader) {
  const auto start = reader.Rest();
  const std::uint32_t size = reader.TakeBigEndian(4);
  if (size > kMaxChunkSize) {
    return std::nullopt;
  }
  Chunk chunk;
  chunk.name = reader.TakeBigEndian(4);
  chunk.data = reader.Take(size);
  const std::uint32_t sum = reader.TakeBigEndian(4);
  if (reader.IsPastEnd()) {
    return std::nullopt;
  }
  chunk.whole = start.first(std::size_t{size} + 12);
  chunk.isIntact = sum == CheckSum(chunk.whole.subspan(4, std::size_t{size} + 4));
  return chunk;
}

int ChannelsOf(std::uint32_t colorType) {
  switch (colorType) {
    case kGrey:
    case kPalette:
      return 1;
    case kGreyAlpha:
      return 2;
    case kColor:
      return 3;
    case kColorAlpha:
      return 4;
    default:
      return 0;
  }
}

class Parser {
 public:
  explicit Parser(std::span<const std::byte> bytes) : fileSize(bytes.size()), reader(bytes) {}

  std::optional<PngParts> Run() {
    Append(reader.Take(kSignatureSize));
    const auto header = TakeChunk(reader);
    if (!header || header->name != Name("IHDR") || !header->isIntact || !ReadHeader(header->data)) {
      return std::nullopt;
    }
    Append(header->whole);
    for (;;) {
      const auto chunk = TakeChunk(reader);
      if (!chunk || !Use(*chunk)) {
        return std::nullopt;
      }
      if (chunk->name == Name("IEND")) {
        return std::move(parts);
      }
    }
  }

 private:
  void Append(std::span<const std::byte> bytes) {
    parts.reduced.insert(parts.reduced.end(), bytes.begin(), bytes.end());
  }

  bool ReadHeader(std::span<const std::byte> data) {
    if (data.size() != kHeaderSize) {
      return false;
    }
    ContainerReader fields(data);
    const std::uint32_t width = fields.TakeBigEndian(4);
    const std::uint32_t height = fields.TakeBigEndian(4);
    parts.depth = static_cast<int>(fields.TakeByte());
    colorType = fields.TakeByte();
    if (!IsPictureSizeAllowed(width, height)) {
      return false;
    }
    parts.width = static_cast<int>(width);
    parts.height = static_cast<int>(height);
    const std::uint64_t rowBits = std::uint64_t{width} * ChannelsOf(colorType) * parts.depth;
    return rowBits > 0 && (rowBits + 7) / 8 * height / kMaxInflation <= fileSize;
  }

  // Keeps a chunk that the pixels need. Returns false if such a chunk is damaged.
  bool Use(const Chunk& chunk) {
    const bool isPixels = chunk.name == Name("IDAT");
    if (isPixels && pixels == Pixels::kPast) {
      return true;  // whatever it is, the pixels have ended
    }
    if (isPixels) {
      pixels = Pixels::kWithin;
    } else if (pixels == Pixels::kWithin) {
      pixels = Pixels::kPast;
    }
    if (chunk.name == Name("tRNS")) {
      UseTransparency(chunk);
      return true;
    }
    const bool isCritical = (chunk.name >> 24 & 0x20) == 0;
    if (isPixels || chunk.name == Name("PLTE") || chunk.name == Name("IEND")) {
      Append(chunk.whole);
    } else if (isCritical) {
      return false;
    }
    return !isCritical || chunk.isIntact;
  }

  void UseTransparency(const Chunk& chunk) {
    if (!chunk.isIntact || pixels != Pixels::kAhead) {
      return;
    }
    ContainerReader samples(chunk.data);
    const std::uint32_t mask = (1U << parts.depth) - 1;
    if (colorType == kPalette) {
      Append(chunk.whole);
    } else if (colorType == kGrey && chunk.data.size() == 2) {
      const std::uint32_t grey = samples.TakeBigEndian(2) & mask;
      parts.transparent = {grey, grey, grey};
    } else if (colorType == kColor && chunk.data.size() == 6) {
      parts.transparent.emplace();
      for (std::uint32_t& sample : *parts.transparent) {
        sample = samples.TakeBigEndian(2) & mask;
      }
    }
  }

  enum class Pixels { kAhead, kWithin, kPast };

  std::uint64_t fileSize;
  ContainerReader reader;
  PngParts parts;
  std::uint32_t colorType = 0;
  Pixels pixels = Pixels::kAhead;
};

}  // namespace

std::optional<PngParts> ReadPngParts(std::span<const std::byte> bytes) {
  return Parser(bytes).Run();
}
