#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>

#include "annotation/MarkKind.h"
#include "annotation/MarkPoints.h"
#include "annotation/ReachTable.h"
#include "platform/Platform.h"
#include "platform/threads/Mutex.h"

// What an annotation is behind its interface, and what the page that owns it asks of it.
//
// Owned by its annotation, whose header it refers to. Every function may be called on the host
// thread while the refresh thread paints the mark; each takes the lock for as long as it runs.
// The header's fields are read and written under the lock as well once a page owns the mark.
class Annotation::State {
 public:
  explicit State(AnnotationHeader& header) : header(header) {}
  static State& Of(Annotation& annotation) { return *annotation.state; }
  static const State& Of(const Annotation& annotation) { return *annotation.state; }

  // --- Ownership: host thread ---

  // Whether a page owns the mark, for the rest of its life.
  bool IsOwned() const { return isOwned; }
  void SetOwned() { isOwned = true; }
  // Returns a copy of all that a host gave to the mark: also what copying an Annotation leaves out.
  static std::unique_ptr<Annotation> FullCopy(const Annotation& source);

  // --- Merging ---

  // A copy of sub-model 0, empty when there is none.
  std::vector<AnnotationPoint> FirstSubModel() const PARCHLET_EXCLUDES(mutex);
  // Gives the points of sub-model 0 another number. Does not throw.
  void MoveFirstSubModelTo(unsigned int subModel) PARCHLET_EXCLUDES(mutex);
  // Takes the sub-models of `fresh`, which there must be, in place of those of like numbers. Does
  // not throw.
  void ReplaceSubModels(SubModels& fresh) PARCHLET_EXCLUDES(mutex);
  // Cuts the mark to what a page keeps of a participant's; see MarkLimits.h. Does not throw.
  void LimitToBounds() PARCHLET_EXCLUDES(mutex);
  // Cuts the list to what the mark has room for as that sub-model; false when it has none for
  // another sub-model.
  bool LimitFragment(unsigned int subModel, std::vector<AnnotationPoint>& list) const
      PARCHLET_EXCLUDES(mutex);
  // Says that the points of sub-model 0 are the local user's, until fragment 0 of the echo replaces
  // them. They do not count against the room for the echo's other fragments.
  void SetDrawnHere() PARCHLET_EXCLUDES(mutex);

  // --- Searching ---

  // Makes the mark report to the table, under `slot`, how far it reaches, from now on.
  void ReportReach(ReachTable& table, std::size_t slot) PARCHLET_EXCLUDES(mutex);
  std::size_t ReachSlot() const PARCHLET_EXCLUDES(mutex);
  // Whether the map has the mark's present id for a key.
  bool IsNamedIn(const std::map<std::string, Annotation*>& annotations) const
      PARCHLET_EXCLUDES(mutex);
  // The stored pixel of the first point of sub-model 0, which there must be.
  POINT AnchorPixel() const PARCHLET_EXCLUDES(mutex);

  // --- Painting ---

  // Draws the mark, if it has two points. Returns whether a nickname tip may stand beside it, so
  // that a frame takes the lock of a mark without one once.
  bool Paint(Gdiplus::Graphics& graphics, CurrentAnnotPageSize size) PARCHLET_EXCLUDES(mutex);
  // What the nickname tip beside the mark needs to know; nothing but `isWanted` when no tip is
  // wanted.
  struct TipSubject {
    bool isWanted = false;
    bool hasPoint = false;
    std::string userId;
    std::string nickname;
    AnnotationPoint firstPoint{};
  };
  TipSubject GetTipSubject() const PARCHLET_EXCLUDES(mutex);
  void SetTipVisible(int value) PARCHLET_EXCLUDES(mutex);
  // The time that makes the mark temporary, which the host may write meanwhile.
  std::uint64_t TempStartTick() const;

 private:
  friend class Annotation;
  friend struct AnnotationTestAccess;

  struct Snapshot;  // what a copy takes over, read under the source's lock

  const MarkKind& Kind() const PARCHLET_REQUIRES(mutex) {
    return KindOf(header.type, header.subType);
  }
  bool WantsTip() const PARCHLET_REQUIRES(mutex) {
    return header.tipVisible != 0 && !header.nickname.empty();
  }
  Snapshot TakeSnapshot() const PARCHLET_EXCLUDES(mutex);
  void CopyAnnotation(const State& source) PARCHLET_EXCLUDES(mutex);
  void TakeOver(Snapshot& snapshot) PARCHLET_REQUIRES(mutex);
  void SetLoadedPicture(std::shared_ptr<Gdiplus::Image> loaded, std::string property)
      PARCHLET_EXCLUDES(mutex);
  void SetPictureProperty(std::string property) PARCHLET_REQUIRES(mutex);
  bool UpdateFrame(CurrentAnnotPageSize size) PARCHLET_REQUIRES(mutex);
  // Tells the table when the reach is another than the one told last.
  void PublishReach() PARCHLET_REQUIRES(mutex);

  AnnotationHeader& header;
  mutable Mutex mutex;
  AnnotationPoint moveOrigin PARCHLET_GUARDED_BY(mutex) = {0, 0, -1.0, -1.0};
  MarkPoints points PARCHLET_GUARDED_BY(mutex);
  RECT frame PARCHLET_GUARDED_BY(mutex) = {0, 0, 0, 0};
  // Shared by the copies of a mark; the last of them releases it.
  std::shared_ptr<Gdiplus::Image> picture PARCHLET_GUARDED_BY(mutex);

  // Where the page that owns the mark looks before it asks the mark. Null until then.
  ReachTable* reachTable PARCHLET_GUARDED_BY(mutex) = nullptr;
  std::size_t reachSlot PARCHLET_GUARDED_BY(mutex) = 0;
  ReachTable::Reach published PARCHLET_GUARDED_BY(mutex) = {kNoBox, kNoBox};
  bool isDrawnHere PARCHLET_GUARDED_BY(mutex) = false;
  bool isOwned = false;  // the host thread's
};

using MarkState = Annotation::State;
