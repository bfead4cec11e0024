#include <parchlet/Utils.h>

#include "support/Mark.h"
#include "support/PictureFile.h"
#include "support/StreamBase.h"
#include "support/TemporaryFolder.h"
#include "support/Whiteboard.h"

namespace {

using testing::AllOf;

constexpr CurrentAnnotPageSize kSize = {200, 100};

// A stream of `bytes` that gives at most `chunk` of them at a time and counts its references.
class CountedStream final : public StreamBase {
 public:
  CountedStream(std::string bytes, std::size_t chunk) : bytes(std::move(bytes)), chunk(chunk) {}

  ULONG AddRef() override { return ++references; }
  ULONG Release() override { return --references; }
  HRESULT Read(void* buffer, ULONG size, ULONG* read) override {
    const std::size_t most = std::min<std::size_t>(size, chunk);
    *read = static_cast<ULONG>(bytes.copy(static_cast<char*>(buffer), most, position));
    position += *read;
    return 0;
  }
  HRESULT Seek(LARGE_INTEGER /*move*/, DWORD /*origin*/, ULARGE_INTEGER* /*position*/) override {
    return -1;
  }

  ULONG references = 2;
  std::string bytes;
  std::size_t chunk;
  std::size_t position = 0;
};

class AnnotationPictureTest : public testing::Test {
 protected:
  // "four.png": two by two pixels, red and green over blue and black.
  AnnotationPictureTest() {
    EXPECT_TRUE(parchlet::SavePicture({2, 2, {kRed, kGreen, kBlue, kBlack}}, File("four.png")));
  }

  std::string File(const std::string& name) { return folder.File(name); }
  std::wstring Path(const std::string& name) { return Utils::Utf8ToUnicode(File(name)); }

  static std::unique_ptr<Annotation> Placed(const std::vector<POINT>& box = {{120, 80}, {20, 20}}) {
    auto mark = Mark("m").Points(kSize, box).Make();
    mark->type = AnnotationTypePicture;
    mark->subType = AnnotationSubTypeUnknown;
    return mark;
  }
  static Frame Show(std::unique_ptr<Annotation> mark) {
    PaintedPage painted(kSize);
    painted.page.AddAnnotation(mark.release(), true);
    return painted.Paint();
  }
  static void ExpectFourColours(const Frame& frame) {
    EXPECT_EQ((RECT{20, 20, 120, 80}), frame.InkBox()) << "the box decides, not the picture";
    EXPECT_THAT(frame, AllOf(Shows(21, 21, kRed), Shows(118, 21, kGreen), Shows(21, 78, kBlue),
                             Shows(118, 78, kBlack)));
  }

  TemporaryFolder folder;
};

TEST_F(AnnotationPictureTest, APictureFromAFileIsStretchedIntoItsBox) {
  std::wstring path = Path("four.png");
  path[path.rfind(L'/')] = L'\\';  // a separator like the other one
  auto mark = Placed();
  mark->SetPicture(path, "property");
  mark->SetPicture(std::wstring(), "no source changes nothing");
  mark->SetPicture(static_cast<IStream*>(nullptr), "no source changes nothing");
  EXPECT_EQ(AnnotationSubTypePng, mark->subType);
  EXPECT_EQ(AnnotationTypePicture, mark->type);
  EXPECT_EQ("property", mark->pictureProperty);
  ExpectFourColours(Show(std::move(mark)));
}

TEST_F(AnnotationPictureTest, AStreamIsReadFromItsPositionAndReleasedOnce) {
  for (const std::size_t chunk : {SIZE_MAX, std::size_t{7}}) {
    CountedStream stream("skipped" + ReadWholeFile(File("four.png")), chunk);
    stream.position = 7;
    auto mark = Placed();
    mark->SetPicture(&stream, "property");
    EXPECT_EQ(1U, stream.references);
    EXPECT_EQ(AnnotationSubTypePng, mark->subType);
    ExpectFourColours(Show(std::move(mark)));
  }
}

TEST_F(AnnotationPictureTest, WhatCannotBeReadDrawsNothingAndIsOfNoFormat) {
  std::ofstream(File("empty.png")).close();
  for (const char* name : {"empty.png", "missing.png"}) {
    auto mark = Placed();
    mark->SetPicture(Path("four.png"), "first");
    mark->SetPicture(Path(name), name);
    EXPECT_EQ(AnnotationSubTypeUnknown, mark->subType) << name;
    EXPECT_EQ(name, mark->pictureProperty);
    EXPECT_THAT(Show(std::move(mark)), IsAll(kWhite)) << name;
  }
  const std::string gif("GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 35);
  std::ofstream(File("one.gif")) << gif;
  EXPECT_TRUE(parchlet::SavePicture({1, 1, {kRed}}, File("one.jpg")));
  auto mark = Placed();
  mark->SetPicture(Path("one.jpg"), "p");
  EXPECT_EQ(AnnotationSubTypeJpeg, mark->subType);
  mark->SetPicture(Path("one.gif"), "p");
  EXPECT_EQ(AnnotationSubTypeUnknown, mark->subType) << "a format without a name of its own";
}

TEST_F(AnnotationPictureTest, CopiesShareOneImageUntilTheLastLetsGo) {
  auto original = Placed();
  original->SetPicture(Path("four.png"), "p");
  auto copy = std::make_unique<Annotation>(*original);
  Annotation third;
  third = *copy;
  EXPECT_EQ(3, AnnotationTestAccess::PictureUses(third));
  *original = *copy;
  EXPECT_EQ(3, AnnotationTestAccess::PictureUses(third)) << "assigned the image it has";
  original->SetPicture(Path("missing.png"), "p");
  EXPECT_EQ(2, AnnotationTestAccess::PictureUses(third));
  third.Destroy();
  third.Destroy();
  EXPECT_EQ(0, AnnotationTestAccess::PictureUses(third));
  EXPECT_EQ(0, third.IsSubModelExist(0));
  original.reset();
  EXPECT_EQ(1, AnnotationTestAccess::PictureUses(*copy));
  ExpectFourColours(Show(std::move(copy)));
}

}  // namespace
