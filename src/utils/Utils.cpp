#include <parchlet/Utils.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <limits>
#include <vector>

#include "platform/Platform.h"

namespace {

std::wstring Widen(const std::string& text, UINT codePage) {
  const int length = MultiByteToWideChar(codePage, 0, text.c_str(), -1, nullptr, 0);
  if (length <= 0) {
    return {};
  }
  std::vector<wchar_t> buffer(static_cast<std::size_t>(length));
  MultiByteToWideChar(codePage, 0, text.c_str(), -1, buffer.data(), length);
  return buffer.data();
}

std::string Narrow(const std::wstring& text, UINT codePage) {
  const int length =
      WideCharToMultiByte(codePage, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
  if (length < 1) {
    return {};
  }
  std::vector<char> buffer(static_cast<std::size_t>(length));
  WideCharToMultiByte(codePage, 0, text.c_str(), -1, buffer.data(), length, nullptr, nullptr);
  return buffer.data();
}

}  // namespace

std::wstring Utils::AsciiToUnicode(const std::string& text) {
  return Widen(text, CP_ACP);
}

std::wstring Utils::Utf8ToUnicode(const std::string& text) {
  return Widen(text, CP_UTF8);
}

std::string Utils::UnicodeToAscii(const std::wstring& text) {
  return Narrow(text, CP_ACP);
}

std::string Utils::UnicodeToUtf8(const std::wstring& text) {
  return Narrow(text, CP_UTF8);
}

std::string Utils::AsciiToUtf8(const std::string& text) {
  return UnicodeToUtf8(AsciiToUnicode(text));
}

std::string Utils::Utf8ToAscii(const std::string& text) {
  return UnicodeToAscii(Utf8ToUnicode(text));
}

std::string Utils::GenerateGuid() {
  GUID guid{};
  if (!SUCCEEDED(CoCreateGuid(&guid))) {
    return {};
  }
  std::array<char, 65> text{};
  const std::uint8_t* tail = guid.Data4;
  const int written =
      std::snprintf(text.data(), text.size(), "%08X-%04X-%04x-%02X%02X-%02X%02X%02X%02X%02X%02X",
                    static_cast<unsigned>(guid.Data1), unsigned{guid.Data2}, unsigned{guid.Data3},
                    unsigned{tail[0]}, unsigned{tail[1]}, unsigned{tail[2]}, unsigned{tail[3]},
                    unsigned{tail[4]}, unsigned{tail[5]}, unsigned{tail[6]}, unsigned{tail[7]});
  return written > 0 ? std::string(text.data()) : std::string();
}

IStream* Utils::GetPictureStream(const std::string& data, HGLOBAL block, unsigned int blockSize) {
  if (block == nullptr || data.empty() || blockSize == 0) {
    return nullptr;
  }
  void* memory = GlobalLock(block);
  if (memory == nullptr) {
    return nullptr;
  }
  IStream* stream = nullptr;
  if (data.size() > blockSize) {
    std::memset(memory, 0, blockSize);
  } else {
    std::memcpy(memory, data.data(), data.size());
    if (!SUCCEEDED(CreateStreamOnHGlobal(block, 0, &stream))) {
      stream = nullptr;
    }
  }
  GlobalUnlock(block);
  return stream;
}

IStream* Utils::MakePictureStream(const std::string& data) {
  if (data.empty() || data.size() > std::numeric_limits<unsigned int>::max()) {
    return nullptr;
  }
  HGLOBAL block = GlobalAlloc(0, data.size());
  if (block == nullptr) {
    return nullptr;
  }
  // Fills the block. The stream that this returns does not own it, so a second one is made below.
  IStream* filled = GetPictureStream(data, block, static_cast<unsigned int>(data.size()));
  IStream* owning = nullptr;
  if (filled == nullptr || !SUCCEEDED(CreateStreamOnHGlobal(block, 1, &owning))) {
    GlobalFree(block);
    owning = nullptr;
  }
  if (filled != nullptr) {
    filled->Release();
  }
  return owning;
}
