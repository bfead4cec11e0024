#include "page/AnnotationPage.h"

namespace {

constexpr ULONGLONG kTemporaryInkMs = 8000;

}  // namespace

void AnnotationPage::DrawPage() {
  Gdiplus::Graphics* graphics = surface.Painter();
  if (graphics == nullptr) {
    return;
  }
  MutexLock lock(mutex);
  graphics->Clear(Gdiplus::Color(clearColor));
  if (backgroundPicture != nullptr && backgroundPicture->IsErased() == 0) {
    backgroundPicture->Draw(graphics, GetSize(), false);
  }
  DrawConfirmed(*graphics);
  DrawPending(*graphics);
  Annotation& band = selection.RubberBand();
  if (band.IsErased() == 0) {
    band.Draw(graphics, GetSize(), false);
    band.DrawRectEx(graphics, GetSize());
  }
  // Whoever reads the surface, with the page lock or after it, finds this frame.
  graphics->Flush(Gdiplus::FlushIntentionSync);
}

void AnnotationPage::DrawConfirmed(Gdiplus::Graphics& graphics) {
  const bool hasSelection = !selection.Selected().empty();
  for (const PaintOrderEntry& entry : store.PaintOrder()) {
    Annotation& annotation = *entry.annotation;
    bool mayHaveTip = true;
    if (annotation.IsErased() == 0) {
      mayHaveTip = MarkState::Of(annotation).Paint(graphics, GetSize());
      if (hasSelection && selection.Holds(annotation)) {
        annotation.DrawRectEx(&graphics, GetSize());
      }
    }
    if (mayHaveTip) {
      DrawTipOf(annotation, graphics);
    }
  }
}

void AnnotationPage::DrawTipOf(Annotation& annotation, Gdiplus::Graphics& graphics) {
  MarkState& state = MarkState::Of(annotation);
  const MarkState::TipSubject subject = state.GetTipSubject();
  if (!subject.isWanted) {
    return;
  }
  const bool isVisible =
      tips.IsTipVisible(subject.userId, annotation.GetAnnotationId(), GetTickCount64());
  state.SetTipVisible(isVisible ? 1 : 0);
  if (isVisible && subject.hasPoint && tipStyle != nullptr) {
    DrawNicknameTip(graphics, *tipStyle, GetSize(), subject.nickname, subject.firstPoint);
  }
}

void AnnotationPage::DrawPending(Gdiplus::Graphics& graphics) {
  for (const auto& [id, annotation] : store.LocalAnnotations()) {
    if (annotation->IsErased() != 0) {
      continue;
    }
    const std::uint64_t start = MarkState::Of(*annotation).TempStartTick();
    if (start != 0 && GetTickCount64() - start >= kTemporaryInkMs) {
      annotation->Erase(1);
    } else {
      annotation->Draw(&graphics, GetSize(), true);
    }
  }
}
