#include "whiteboard/Participant.h"

#include <memory>
#include <utility>

#include "common/Input.h"
#include "whiteboard/Content.h"

namespace whiteboard {

namespace {

AnnotationSubType SubTypeOf(Tool tool) {
  switch (tool) {
    case Tool::kLine:
      return AnnotationSubTypeLine;
    case Tool::kRectangle:
      return AnnotationSubTypeRectangle;
    case Tool::kEllipse:
      return AnnotationSubTypeEllipse;
    case Tool::kTriangle:
      return AnnotationSubTypeTriangle;
    case Tool::kRightTriangle:
      return AnnotationSubTypeRightTriangle;
    default:
      return AnnotationSubTypePath;
  }
}

AnnotationPageInfo InfoOf(SIZE size, bool transparent) {
  AnnotationPageInfo info{};
  info.width = size.cx;
  info.height = size.cy;
  info.transparent = transparent;
  info.viewRect = {0, 0, size.cx, size.cy};
  return info;
}

}  // namespace

Participant::Participant(std::string userId, std::string nickname, HWND window, bool transparent)
    : userId(std::move(userId)),
      nickname(std::move(nickname)),
      window(window),
      transparent(transparent) {
  constexpr unsigned int kTipText = 0xFFFFFFFF;
  constexpr unsigned int kTipBox = 0xD01971C2;
  constexpr unsigned int kTipSize = 15;
  // No nickname: a participant's own name beside own strokes is in the way. The meeting sets it for
  // the others.
  engine.SetUserInfo(this->userId, "", "");
  engine.SetNicknameTip(kTipText, kTipSize, "", kTipBox);
  engine.Init();
}

void Participant::SetNickname(const std::string& newNickname) {
  nickname = newNickname;
}

void Participant::OnLeavingPage(std::function<void()> newEndGesture) {
  endGesture = std::move(newEndGesture);
}

void Participant::LeavePage() {
  endGesture();
}

void Participant::OpenDocument(const Document& document, SIZE size) {
  if (!documentId.empty()) {
    engine.DelDoc(documentId);
  }
  documentId = document.id;
  engine.NewDoc(userId, documentId);
  for (const Page& page : document.pages) {
    AddPage(page, size);
  }
  TurnTo(document.CurrentPage().id);
}

void Participant::AddPage(const Page& page, SIZE size) {
  const bool isTransparent = transparent || page.content != nullptr;
  if (engine.NewPage(documentId, page.id, userId, window, InfoOf(size, isTransparent)) != 1) {
    throw apps::Failure("the engine has no room for another page");
  }
  pageId = page.id;
  PutOnPage(page);
}

void Participant::PutOnPage(const Page& page) {
  if (!page.background.empty()) {
    SetBackground(page.background);
  }
  for (const auto& [id, mark] : page.marks) {
    for (const auto& fragment : mark.fragments) {
      Annotation known(*fragment);
      known.tipVisible = 0;  // no name beside an old mark
      Receive(known);
    }
  }
}

void Participant::DeletePage(const std::string& id) {
  engine.DelPage(documentId, id);
}

void Participant::TurnTo(const std::string& id) {
  pageId = id;
  engine.SetCurrentPage(documentId, pageId);
}

void Participant::Resize(SIZE size) {
  AnnotationPageInfo info{};
  if (engine.GetPageSize(documentId, pageId, info, false) == 1 &&
      (info.width != size.cx || info.height != size.cy)) {
    engine.UpdatePage(documentId, pageId, InfoOf(size, info.transparent), true);
  }
}

void Participant::TakePen(const Style& style) {
  engine.SetPen(kColors[static_cast<std::size_t>(style.color)],
                kWidths[static_cast<std::size_t>(style.width)]);
  engine.SetAnnotationType(AnnotationTypeDrawing, SubTypeOf(style.tool));
}

bool Participant::Press(POINT point) {
  TakeSelection();
  return engine.StartDrawing(documentId, pageId, point) == 1;
}

void Participant::Move(POINT point) {
  engine.MoveDrawing(point);
}

const Annotation* Participant::Drawing() {
  std::string document;
  std::string page;
  const std::string id = engine.GetCurrentAnnotationInfo(document, page);
  return engine.GetLocalAnnotation(documentId, pageId, id);
}

const Annotation* Participant::Release(POINT point) {
  std::string document;
  std::string page;
  const std::string id = engine.GetCurrentAnnotationInfo(document, page);
  Annotation* mark = engine.GetLocalAnnotation(documentId, pageId, id);
  if (mark == nullptr) {
    engine.EndDrawing();
    return nullptr;
  }
  const bool hasNoExtent = engine.IsPointAnnotation(mark) == 1;
  if (hasNoExtent && mark->subType == AnnotationSubTypePath) {
    engine.MoveDrawing(point);  // a press alone shows nothing: two equal points are a dot
  }
  engine.EndDrawing();
  if (hasNoExtent && mark->subType != AnnotationSubTypePath) {
    engine.CancelAnnotation(documentId, pageId, id);
    return nullptr;
  }
  return mark;
}

bool Participant::StartSelecting(POINT point, bool band) {
  if (band) {
    TakeSelection();
  }
  const std::vector<std::string> before = SelectedIds();
  const bool isStarted = engine.StartSelecting(documentId, pageId, "", "", point) == 1;
  const std::vector<std::string> after = SelectedIds();
  if (isStarted && !band && !after.empty() && after != before) {
    // The press has selected a mark; the same press again starts to move it.
    engine.EndSelecting();
    return engine.StartSelecting(documentId, pageId, "", "", point) == 1;
  }
  return isStarted;
}

std::vector<std::string> Participant::SelectedIds() {
  std::vector<std::string> ids;
  for (const auto& [id, mark] : engine.GetSelectedAnnotations(documentId, pageId)) {
    ids.push_back(id);
  }
  return ids;
}

void Participant::MoveSelecting(POINT point) {
  engine.MoveSelecting(point);
}

std::vector<const Annotation*> Participant::EndSelecting() {
  std::vector<const Annotation*> moved;
  if (engine.EndSelecting() == 1) {
    for (const auto& [id, mark] : engine.GetSelectedAnnotations(documentId, pageId)) {
      moved.push_back(mark);
    }
  }
  return moved;
}

std::vector<std::string> Participant::TakeSelection() {
  return engine.EraseSelectedAnnotations(documentId, pageId);
}

std::vector<std::string> Participant::FindErased(POINT from, POINT to) {
  const bool isPress = from.x == to.x && from.y == to.y;
  std::vector<std::string> ids =
      engine.EraseAnnotations(documentId, pageId, "", "",
                              isPress ? std::vector<POINT>{from} : std::vector<POINT>{from, to});
  // For a single point that hits nothing the result is one empty id.
  std::erase(ids, std::string());
  return ids;
}

const Annotation& Participant::PlacePicture(const std::string& path) {
  LoadContent(path);  // the engine would place an empty picture
  const Annotation* mark = engine.AddPictureFromFile(documentId, pageId, path, path, false);
  if (mark == nullptr) {
    throw apps::Failure(path + ": the engine did not take the picture");
  }
  return *mark;
}

void Participant::Receive(const Annotation& fragment) {
  engine.AddAnnotationFromRemote(documentId, pageId, std::make_unique<Annotation>(fragment));
}

void Participant::Erase(const std::string& author, const std::string& annotationId) {
  if (author == userId) {
    engine.EraseAnnotation(documentId, pageId, author, annotationId);
  } else {
    engine.EraseAnnotationFromRemote(documentId, pageId, author, annotationId);
  }
}

void Participant::Clear(const std::string& author) {
  TakeSelection();
  engine.ClearAnnotations(documentId, pageId, author, "");
}

void Participant::SetBackground(const std::string& path) {
  engine.AddPictureFromFile(documentId, pageId, path, path, true);
}

bool Participant::ExportSurface(const std::string& path) {
  return engine.SavePage(documentId, pageId, path, std::wstring()) == 1;
}

bool Participant::ExportScreen(const std::string& path) {
  return engine.SavePage(documentId, pageId, path, window) == 1;
}

bool Participant::ExportDocument(const std::string& folder) {
  return engine.SaveDocument(documentId, folder, "whiteboard", std::wstring()) == 1;
}

}  // namespace whiteboard
