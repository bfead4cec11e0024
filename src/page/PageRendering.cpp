#include <atomic>

#include "page/AnnotationPage.h"

namespace {

constexpr ULONGLONG kTemporaryInkMs = 8000;

}  // namespace

int AnnotationPage::DrawPage() {
  MutexLock lock(mutex);
  if (graphics == nullptr) {
    return 0;
  }
  graphics->Clear(Gdiplus::Color(clearColor));
  DrawBackgroundPicture();
  DrawConfirmed();
  DrawPending();
  DrawRubberBand();
  // Whoever reads the surface, with the page lock or after it, finds this frame.
  graphics->Flush(Gdiplus::FlushIntentionSync);
  return 1;
}

void AnnotationPage::DrawBackgroundPicture() {
  if (backgroundPicture != nullptr && backgroundPicture->IsErased() == 0) {
    backgroundPicture->Draw(graphics.get(), GetSize(), false);
  }
}

void AnnotationPage::DrawConfirmed() {
  for (const PaintOrderEntry& entry : paintOrder) {
    Annotation& annotation = *entry.annotation;
    if (annotation.IsErased() == 0) {
      annotation.Draw(graphics.get(), GetSize(), false);
      if (!selectedAnnotations.empty() && annotation.IsNamedIn(selectedAnnotations)) {
        annotation.DrawRectEx(graphics.get(), GetSize());
      }
    }
    DrawTipOf(annotation);
  }
}

void AnnotationPage::DrawPending() {
  for (const auto& [id, annotation] : localAnnotations) {
    if (annotation->IsErased() != 0) {
      continue;
    }
    // The host may write it meanwhile.
    const std::uint64_t start =
        std::atomic_ref(annotation->tempStartTick).load(std::memory_order_relaxed);
    if (start != 0 && GetTickCount64() - start >= kTemporaryInkMs) {
      annotation->Erase(1);
    } else {
      annotation->Draw(graphics.get(), GetSize(), true);
    }
  }
}

void AnnotationPage::DrawRubberBand() {
  if (selectRect.IsErased() == 0) {
    selectRect.Draw(graphics.get(), GetSize(), false);
    selectRect.DrawRectEx(graphics.get(), GetSize());
  }
}
