// The generated host's calls about settings, drawing, pictures and tips.
#include <algorithm>

#include "model/Session.h"
#include "support/TestAccess.h"

namespace {

struct PictureSize {
  int width, height;
};
constexpr PictureSize kPictureSizes[] = {{2, 3}, {70, 2}, {0, 0}};

int Fitted(int picture, int page) {
  return picture < page ? picture : page / 2;
}

// The largest box of the picture's aspect in the middle of the page.
RECT BackgroundBox(PictureSize picture, CurrentAnnotPageSize page) {
  const double pageAspect = static_cast<double>(page.width) / page.height;
  const double aspect = static_cast<double>(picture.width) / picture.height;
  if (std::abs(pageAspect - aspect) < 0.001) {
    return {0, 0, page.width, page.height};
  }
  if (pageAspect > aspect) {
    const auto width = static_cast<LONG>(page.height * aspect);
    const LONG x = (page.width - width) / 2;
    return {x, 0, x + width, page.height};
  }
  const auto height = static_cast<LONG>(page.width / aspect);
  const LONG y = (page.height - height) / 2;
  return {0, y, page.width, y + height};
}

}  // namespace

void Session::ChangeSettings() {
  const int kind = any.Below(4);
  Trace("settings " + std::to_string(kind));
  if (kind == 0) {
    const unsigned long color = any.Word();
    const unsigned width = any.OneIn(4) ? any.Word() : static_cast<unsigned>(any.Below(40));
    engine->SetPen(color, width);
    plain.SetPen(color, width);
  } else if (kind == 1) {
    const auto type = static_cast<AnnotationType>(any.OneIn(12) ? any.Below(8) - 2 : 1);
    const AnnotationSubType subType = any.SubType();
    engine->SetAnnotationType(type, subType);
    plain.SetType(type, subType);
  } else if (kind == 2) {
    const std::string userId = any.UserId();
    const std::string subId = any.UserSubId();
    const std::string name = any.Name();
    engine->SetUserInfo(userId, subId, name);
    plain.SetUser(userId, subId, name);
  } else {
    plain.backgroundColor = any.Word();
    Same("SetPageBackgroundColor", engine->SetPageBackgroundColor(plain.backgroundColor),
         plain.CurrentPage() != nullptr ? 1 : 0);
  }
}

void Session::StartDrawing() {
  const Known at = AnyPage();
  const POINT point = any.Point();
  Trace("StartDrawing " + Text(at.doc) + " " + Text(at.page) + " " + std::to_string(point.x) + "," +
        std::to_string(point.y));
  if (at.plain != nullptr && at.plain->pending.size() > 30) {
    return;
  }
  const int result = engine->StartDrawing(at.doc, at.page, point);
  PlainPage* page = plain.PageForDrawing(at.doc, at.page, point);
  Same("StartDrawing", result, page != nullptr ? 1 : 0);
  if (page == nullptr) {
    return;
  }
  const auto pending = PageTestAccess::Pending(*engine->GetPagePtr(at.doc, at.page));
  const auto fresh = std::find_if(pending.begin(), pending.end(), [&](const auto& entry) {
    return !page->pending.contains(entry.first);
  });
  Same("a drawing that is pending", fresh != pending.end(), true);
  Same("the length of its id", fresh->first.size(), std::size_t{36});
  const PlainMarkPtr mark = plain.NewMark(plain.type, plain.subType);
  mark->object = fresh->second;
  page->AddLocal(mark, fresh->first);
  mark->AddPoint(page->At(point));
}

void Session::MoveDrawing() {
  const POINT point = any.Point();
  Trace("MoveDrawing " + std::to_string(point.x) + "," + std::to_string(point.y));
  const int result = engine->MoveDrawing(point);
  const PlainMarkPtr mark = plain.Drawing();
  Same("MoveDrawing", result, mark != nullptr ? 1 : 0);
  if (mark != nullptr) {
    mark->AddPoint(plain.CurrentPage()->At(point));
  }
}

void Session::EndDrawing() {
  Trace("EndDrawing");
  const int result = engine->EndDrawing();
  const bool isDrawing = plain.Drawing() != nullptr;
  Same("EndDrawing", result, isDrawing ? 1 : 0);
  if (isDrawing) {
    plain.CurrentPage()->drawing = nullptr;
  }
}

void Session::AskForDrawing() {
  Trace("GetCurrentAnnotationInfo");
  std::string doc = "?";
  std::string pageId = "?";
  const std::string id = engine->GetCurrentAnnotationInfo(doc, pageId);
  const PlainPage* page = plain.CurrentPage();
  Same("the current document", doc, plain.current.value_or("?"));
  Same("the current page", pageId, page != nullptr ? page->id : "?");
  const bool isDrawing = page != nullptr && page->drawing != nullptr;
  Same("the drawing's id", id, isDrawing ? page->drawing->id : "");
}

void Session::AskForDot() {
  const PlainMarkPtr mark = any.OneIn(8) ? nullptr : AnyMark();
  Trace("IsPointAnnotation");
  Same("IsPointAnnotation", engine->IsPointAnnotation(mark != nullptr ? mark->object : nullptr),
       mark != nullptr && mark->IsDot() ? 1 : 0);
}

void Session::PlacePicture() {
  const Known at = AnyPage();
  const int which = any.Below(3);
  const bool isFile = any.OneIn(2);
  const bool isBackground = any.OneIn(2);
  const bool isAbsent = any.OneIn(8);
  Trace("picture " + std::to_string(which) + (isFile ? " of a file" : "") +
        (isBackground ? " as background" : "") + (isAbsent ? " that is not there" : ""));
  const auto index = static_cast<std::size_t>(which);
  const std::string path =
      isAbsent && any.OneIn(2) ? "" : Folder().File(isAbsent ? "missing" : std::to_string(which));
  Annotation* placed =
      isFile ? engine->AddPictureFromFile(at.doc, at.page, path, "property", isBackground)
             : engine->AddPictureFromStream(at.doc, at.page, isAbsent ? "" : kPictures[index],
                                            "property", isBackground);
  PlainPage* page = plain.FindPage(at.doc, at.page);
  const bool isPicture = kPictureSizes[which].width > 0;
  const bool isPlaced = page != nullptr && !isAbsent && (isPicture || (!isFile && !isBackground));
  Same("a picture placed", placed != nullptr, isPlaced);
  if (page == nullptr) {
    return;
  }
  const PlainMarkPtr mark = plain.NewMark(AnnotationTypePicture, AnnotationSubTypeUnknown);
  if (!isBackground) {
    const auto pending = PageTestAccess::Pending(*engine->GetPagePtr(at.doc, at.page));
    for (const auto& [id, object] : pending) {
      if (!page->pending.contains(id)) {
        mark->object = object;
        page->AddLocal(mark, id);
      }
    }
  }
  if (!isPlaced) {
    return;
  }
  const CurrentAnnotPageSize size = page->Size();
  const RECT box = isBackground ? BackgroundBox(kPictureSizes[which], size)
                                : RECT{0, 0, Fitted(kPictureSizes[which].width, size.width),
                                       Fitted(kPictureSizes[which].height, size.height)};
  mark->AddPoint(page->At({box.left, box.top}));
  mark->AddPoint(page->At({box.right, box.bottom}));
  mark->hasPicture = true;
  mark->subType = isPicture ? AnnotationSubTypeBmp : AnnotationSubTypeUnknown;
  mark->pictureProperty = "property";
  mark->object = placed;
  if (isBackground) {
    mark->isOwned = true;
    page->background = mark;
  }
}

// The page's surface, or what the screen shows where a window is.
void Session::SavePage() {
  static const std::vector<std::string> names = {"page.png", "page.jpg", "page.bmp"};
  const Known at = AnyPage();
  HWND const window = any.OneIn(2) ? AnyWindow().Handle() : HWND{nullptr};
  Trace("SavePage " + Text(at.doc) + " " + Text(at.page));
  const int result = engine->SavePage(at.doc, at.page, Folder().File(any.OneOf(names)), window);
  Same("SavePage", result, plain.FindPage(at.doc, at.page) != nullptr ? 1 : 0);
}

void Session::SetTip() {
  const unsigned color = any.Word();
  const auto size = static_cast<unsigned>(any.Below(30));
  Trace("SetNicknameTip");
  Same("SetNicknameTip",
       engine->SetNicknameTip(color, size, any.OneIn(2) ? "" : "no such font", color), 1);
}
