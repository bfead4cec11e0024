#include "replay/Participant.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <parchlet/Utils.h>

#include "common/Input.h"

namespace replay {

namespace {

using apps::Failure;

constexpr const char* kDocument = "boards";

AnnotationSubType SubTypeOf(MarkKind kind) {
  switch (kind) {
    case MarkKind::kLine:
      return AnnotationSubTypeLine;
    case MarkKind::kRectangle:
      return AnnotationSubTypeRectangle;
    case MarkKind::kEllipse:
      return AnnotationSubTypeEllipse;
    case MarkKind::kPath:
      break;
  }
  return AnnotationSubTypePath;
}

// Throws Failure when the engine refused the call.
void Require(int result, const char* call) {
  if (result != 1) {
    throw Failure(std::string("the engine refused ") + call);
  }
}

// Returns the page's point at a pixel, as messages carry it.
AnnotationPoint PointAt(POINT pixel, apps::PageSize size) {
  return {pixel.x, pixel.y, static_cast<double>(pixel.x) / size.width,
          static_cast<double>(pixel.y) / size.height};
}

}  // namespace

Participant::Participant(apps::PageSize size, Identity identity)
    : size(size), identity(std::move(identity)), window(RECT{0, 0, size.width, size.height}) {
  engine.SetUserInfo(this->identity.userId, this->identity.userSubId, this->identity.nickname);
  Require(engine.NewDoc(this->identity.userId, kDocument), "NewDoc");
  Require(engine.Init(), "Init");
}

const Identity& Participant::Who() const {
  return identity;
}

void Participant::OpenPage(const std::string& pageId) {
  AnnotationPageInfo info = {};
  info.width = size.width;
  info.height = size.height;
  info.viewRect = {0, 0, size.width, size.height};
  Require(engine.NewPage(kDocument, pageId, identity.userId, window.Handle(), info), "NewPage");
  page = pageId;
}

void Participant::TakePen(MarkKind kind, std::uint32_t color, unsigned int width) {
  engine.SetPen(color, width);
  engine.SetAnnotationType(AnnotationTypeDrawing, SubTypeOf(kind));
}

void Participant::Press(POINT point) {
  Require(engine.StartDrawing(kDocument, page, point), "StartDrawing");
}

void Participant::Move(POINT point) {
  Require(engine.MoveDrawing(point), "MoveDrawing");
}

const Annotation& Participant::Release() {
  std::string docId;
  std::string pageId;
  const std::string id = engine.GetCurrentAnnotationInfo(docId, pageId);
  Require(engine.EndDrawing(), "EndDrawing");
  const Annotation* mark = engine.GetLocalAnnotation(docId, pageId, id);
  if (mark == nullptr) {
    throw Failure("the engine has lost the mark just drawn");
  }
  return *mark;
}

const Annotation& Participant::Place(const std::string& file, const std::vector<POINT>& corners) {
  Annotation* picture = engine.AddPictureFromFile(kDocument, page, file, "", false);
  Require(picture != nullptr ? 1 : 0, "AddPictureFromFile");
  if (!corners.empty()) {
    const auto [left, right] = std::minmax(corners[0].x, corners[1].x);
    const auto [top, bottom] = std::minmax(corners[0].y, corners[1].y);
    picture->InsertPoints(0, {PointAt({left, top}, size), PointAt({right, bottom}, size)});
  }
  return *picture;
}

void Participant::SetBackground(const std::string& file) {
  Require(engine.AddPictureFromFile(kDocument, page, file, "", true) != nullptr ? 1 : 0,
          "AddPictureFromFile");
}

void Participant::SetBackgroundFromRemote(const std::string& bytes) {
  Require(engine.AddPictureFromStream(kDocument, page, bytes, "", true) != nullptr ? 1 : 0,
          "AddPictureFromStream");
}

void Participant::Receive(const Message& message) {
  auto mark = std::make_unique<Annotation>(*message.fragment);
  if (message.picture != nullptr) {
    mark->SetPicture(Utils::MakePictureStream(*message.picture), mark->pictureProperty);
  }
  Require(engine.AddAnnotationFromRemote(kDocument, page, std::move(mark)),
          "AddAnnotationFromRemote");
}

std::vector<std::string> Participant::FindErased(const std::vector<POINT>& path) {
  std::vector<std::string> ids = engine.EraseAnnotations(kDocument, page, "", "", path);
  // For a single point that hits nothing the result is one empty id.
  std::erase(ids, std::string());
  return ids;
}

void Participant::Erase(const std::string& userId, const std::string& annotationId) {
  Require(engine.EraseAnnotation(kDocument, page, userId, annotationId), "EraseAnnotation");
}

bool Participant::HasMark(const std::string& userId, const std::string& annotationId) {
  return engine.FindAnnotation(kDocument, page, userId, annotationId) == 1;
}

void Participant::EraseFromRemote(const std::string& userId, const std::string& annotationId) {
  Require(engine.EraseAnnotationFromRemote(kDocument, page, userId, annotationId),
          "EraseAnnotationFromRemote");
}

void Participant::Clear(const Identity& author) {
  // The engine refuses when there is nothing to clear, which is no failure here.
  engine.ClearAnnotations(kDocument, page, author.userId, author.userSubId);
}

void Participant::Select(POINT from, POINT to) {
  // A press on a mark that is still selected would drag it.
  DropSelection();
  Require(engine.StartSelecting(kDocument, page, "", "", from), "StartSelecting");
  engine.MoveSelecting(to);
  engine.EndSelecting();
}

bool Participant::Drag(const std::vector<POINT>& way) {
  Require(engine.StartSelecting(kDocument, page, "", "", way.front()), "StartSelecting");
  bool moving = true;
  for (auto point = way.begin() + 1; moving && point != way.end(); ++point) {
    moving = engine.MoveSelecting(*point) == 1;
  }
  engine.EndSelecting();
  return moving;
}

std::map<std::string, Annotation*> Participant::Selected() {
  return engine.GetSelectedAnnotations(kDocument, page);
}

void Participant::DropSelection() {
  engine.EraseSelectedAnnotations(kDocument, page);
}

void Participant::ShowNames(unsigned int letterSize, bool seen) {
  constexpr std::uint32_t kText = 0xFFFFFFFF;
  constexpr std::uint32_t kBox = 0xE0303A4B;
  Require(engine.SetNicknameTip(seen ? kText : 0, letterSize, "", seen ? kBox : 0),
          "SetNicknameTip");
}

void Participant::SavePage(const std::string& path) {
  if (engine.SavePage(kDocument, page, path, std::wstring()) != 1) {
    throw Failure(path + ": the page cannot be written");
  }
}

void Participant::SaveDocument(const std::string& folder) {
  if (engine.SaveDocument(kDocument, folder, "", std::wstring()) != 1) {
    throw Failure(folder + ": the pages cannot be written");
  }
}

std::uint64_t Participant::NextFullFrame() const {
  // The next frame may have been painted before the last call; the one after it was not.
  constexpr std::uint64_t kFrames = 2;
  return window.PresentCount() + kFrames;
}

void Participant::AwaitFrame(std::uint64_t number) const {
  constexpr int kTimeoutMs = 60'000;
  if (!window.WaitForPresent(number, kTimeoutMs)) {
    throw Failure("the engine has pushed no new frame for a minute");
  }
}

MemoryFrame Participant::CopyFrame() const {
  return window.CopyFrame();
}

std::uint64_t Participant::FrameCount() const {
  return window.PresentCount();
}

}  // namespace replay
