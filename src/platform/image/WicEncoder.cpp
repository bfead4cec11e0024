// The encoders by the system's imaging component, into memory: it may go back in what it writes.
#include <vector>

#include "platform/image/Encoders.h"
#include "platform/image/PixelMath.h"
#include "platform/image/Wic.h"

namespace {

constexpr float kJpegQuality = 0.9F;
// As many as readers of the format take.
constexpr int kMaxPngSide = 1'000'000;
constexpr int kMaxJpegSide = 65'500;

// A file of one picture, in the making.
class Writer {
 public:
  explicit Writer(const GUID& container) {
    isOpen = wic.IsReady() && SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out())) &&
             SUCCEEDED(wic.Factory()->CreateEncoder(container, nullptr, encoder.Out())) &&
             SUCCEEDED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) &&
             SUCCEEDED(encoder->CreateNewFrame(frame.Out(), options.Out()));
  }

  bool IsOpen() const { return isOpen; }

  bool SetQuality(float quality) {
    PROPBAG2 option{};
    wchar_t name[] = L"ImageQuality";
    option.pstrName = name;
    VARIANT value{};
    value.vt = VT_R4;
    value.fltVal = quality;
    return options.get() != nullptr && SUCCEEDED(options->Write(1, &option, &value));
  }

  bool Start(int width, int height, const GUID& format) {
    GUID given = format;
    return SUCCEEDED(frame->Initialize(options.get())) &&
           SUCCEEDED(frame->SetSize(static_cast<UINT>(width), static_cast<UINT>(height))) &&
           SUCCEEDED(frame->SetPixelFormat(&given)) && given == format;
  }

  bool WriteRow(std::vector<BYTE>& row) {
    const auto size = static_cast<UINT>(row.size());
    return SUCCEEDED(frame->WritePixels(1, size, size, row.data()));
  }

  // Ends the picture and copies all of its bytes.
  bool Finish(ReplacingFile& file) {
    HGLOBAL block = nullptr;
    const LARGE_INTEGER nowhere{};
    ULARGE_INTEGER size{};
    if (FAILED(frame->Commit()) || FAILED(encoder->Commit()) ||
        FAILED(stream->Seek(nowhere, STREAM_SEEK_END, &size)) ||
        FAILED(GetHGlobalFromStream(stream.get(), &block))) {
      return false;
    }
    const void* bytes = GlobalLock(block);
    const bool isWritten =
        bytes != nullptr && file.Write(bytes, static_cast<std::size_t>(size.QuadPart));
    GlobalUnlock(block);
    return isWritten;
  }

 private:
  Wic wic;
  ComPointer<IStream> stream;
  ComPointer<IWICBitmapEncoder> encoder;
  ComPointer<IWICBitmapFrameEncode> frame;
  ComPointer<IPropertyBag2> options;
  bool isOpen = false;
};

// Writes every row in colours of `channels` bytes, blue first, that `convert` makes of its pixels.
template <class Convert>
bool WriteRows(Writer& writer, const PictureView& view, std::size_t channels, Convert convert) {
  std::vector<BYTE> row(static_cast<std::size_t>(view.width) * channels);
  for (int y = 0; y < view.height; ++y) {
    BYTE* byte = row.data();
    for (int x = 0; x < view.width; ++x, byte += channels) {
      const StraightColor color = convert(PixelAt(view, x, y));
      byte[0] = color.blue;
      byte[1] = color.green;
      byte[2] = color.red;
      if (channels == 4) {
        byte[3] = color.alpha;
      }
    }
    if (!writer.WriteRow(row)) {
      return false;
    }
  }
  return true;
}

bool Fits(const PictureView& view, int maxSide) {
  return view.width <= maxSide && view.height <= maxSide;
}

}  // namespace

bool EncodePng(const PictureView& view, ReplacingFile& file) {
  if (!Fits(view, kMaxPngSide)) {
    return false;
  }
  Writer writer(GUID_ContainerFormatPng);
  return writer.IsOpen() && writer.Start(view.width, view.height, GUID_WICPixelFormat32bppBGRA) &&
         WriteRows(writer, view, 4, Unpremultiply) && writer.Finish(file);
}

bool EncodeJpeg(const PictureView& view, ReplacingFile& file) {
  if (!Fits(view, kMaxJpegSide)) {
    return false;
  }
  Writer writer(GUID_ContainerFormatJpeg);
  return writer.IsOpen() && writer.SetQuality(kJpegQuality) &&
         writer.Start(view.width, view.height, GUID_WICPixelFormat24bppBGR) &&
         WriteRows(writer, view, 3, ComposeOverWhite) && writer.Finish(file);
}
