#include "platform/text/Charset.h"

#include <iconv.h>

#include <algorithm>
#include <array>

#include "platform/text/Unicode.h"

namespace {

// One conversion of the system's converter between UTF-8 and another character set.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle(iconv_open(to, from)) {}
  ~Converter() {
    if (IsOpen()) {
      iconv_close(handle);
    }
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool IsOpen() const { return handle != reinterpret_cast<iconv_t>(-1); }

  // Converts all of `bytes`; `bad` stands for each byte at which the converter stops.
  std::string Convert(std::string_view bytes, std::string_view bad, std::size_t (*skip)(char)) {
    std::string out;
    char* in =
        const_cast<char*>(bytes.data());  // the converter's interface; it does not write there
    std::size_t left = bytes.size();
    while (left > 0) {
      if (Step(&in, &left, out)) {
        continue;
      }
      Flush(out);
      const std::size_t skipped = std::min(left, skip(*in));
      in += skipped;
      left -= skipped;
      out += bad;
    }
    Flush(out);
    return out;
  }

 private:
  // Calls the converter once; null bytes tell it to finish. Returns false if it did nothing.
  bool Step(char** in, std::size_t* left, std::string& out) {
    std::array<char, 256> buffer{};
    char* to = buffer.data();
    std::size_t room = buffer.size();
    const std::size_t before = left != nullptr ? *left : 0;
    const bool isDone = iconv(handle, in, left, &to, &room) != static_cast<std::size_t>(-1);
    out.append(buffer.data(), buffer.size() - room);
    return isDone || (left != nullptr && *left != before) || room != buffer.size();
  }

  // Some sets write an accent as a character of its own. Their converters hold a letter back until
  // they see the next one.
  void Flush(std::string& out) { Step(nullptr, nullptr, out); }

  iconv_t handle;
};

std::string Utf8FromCharset(std::string_view bytes, const std::string& charset) {
  Converter converter("UTF-8", charset.c_str());
  if (!converter.IsOpen()) {
    return std::string(bytes);
  }
  return converter.Convert(bytes, "\xEF\xBF\xBD", [](char) -> std::size_t { return 1; });
}

std::string CharsetFromUtf8(const std::string& utf8, const std::string& charset) {
  Converter converter(charset.c_str(), "UTF-8");
  if (!converter.IsOpen()) {
    return utf8;
  }
  return converter.Convert(utf8, "?", [](char lead) -> std::size_t {
    const auto byte = static_cast<unsigned char>(lead);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
  });
}

}  // namespace

std::wstring DecodeText(std::string_view bytes, const std::string& charset) {
  return charset.empty() ? DecodeUtf8(bytes) : DecodeUtf8(Utf8FromCharset(bytes, charset));
}

std::string EncodeText(std::wstring_view text, const std::string& charset) {
  const std::string utf8 = EncodeUtf8(text);
  return charset.empty() ? utf8 : CharsetFromUtf8(utf8, charset);
}
