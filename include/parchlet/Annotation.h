// Annotation.h - one mark on a page, and the record of its identity and style.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/AnnotationTypes.h>
#include <parchlet/Mutex.h>
#include <parchlet/Platform.h>

class ReachTable;

// Identity and style of an annotation. The fields are public: a host fills them in a mark that it
// rebuilds from a message, before it hands the mark to the engine. Once a page owns the mark, the
// refresh thread reads them while it paints: the host writes none then but `tempStartTick`, and
// that atomically, while the functions of Annotation are safe at any time.
class PARCHLET_API AnnotationHeader {
 public:
  AnnotationHeader();
  AnnotationHeader(const AnnotationHeader& other);
  AnnotationHeader& operator=(const AnnotationHeader& other);
  ~AnnotationHeader();

  std::string annotationId;     // the page gives local marks a fresh GUID text
  std::string userId;           // the author; pages group marks by it
  std::string userSubId;        // the author's second identity string
  std::string nickname;         // the author's display name, UTF-8, shown beside a fresh mark
  std::string pictureProperty;  // the string given to SetPicture
  std::int32_t hostData1 = 4;   // carried and copied, never interpreted
  std::int32_t hostData2 = 0;
  std::int32_t hostData3 = 0;
  // Which sub-model of the mark a fragment's points become, which are in its own sub-model 0: see
  // Parchlet::AddAnnotationFromRemote.
  std::int32_t subModelIndex = -1;
  std::int32_t order = 0;       // paint order on the page, ascending
  std::int32_t erased = 0;      // 1: neither drawn nor hit; the mark stays in its page
  std::int32_t tipVisible = 1;  // non-zero while the author's name is to be shown
  AnnotationType type = AnnotationTypeDrawing;
  AnnotationSubType subType = AnnotationSubTypePath;
  AnnotationPen pen = {0xFF000000, 6, 0};
  // 0: permanent. Else a time of GetTickCount64: a mark drawn here and not confirmed yet is erased
  // 8000 ms after it. The page has such a mark from the start, so this one field may be stored
  // while the mark is painted: by std::atomic_ref, or what the host's compiler has for that, in the
  // mark that Parchlet::GetLocalAnnotation gives.
  std::uint64_t tempStartTick = 0;
};

// One mark: a free-hand path, a shape or a placed picture.
//
// Points are kept in sub-models, numbered lists 0, 1, 2, ... without gaps. A mark drawn here has
// sub-model 0 alone; a mark that arrives in fragments gets one sub-model a fragment. A path's
// sub-models are drawn as one line.
//
// Owner: whoever made it, until a page adopts it; from then on the page, for the rest of its life.
// Threads: every function may be called at any time from the host thread while the refresh thread
// paints the mark; each takes the mark's own lock for as long as it runs.
//
// A function that runs out of memory throws std::bad_alloc, a picture that cannot be had excepted.
class PARCHLET_API Annotation : public AnnotationHeader {
 public:
  // The points by the number of their sub-model.
  using SubModels = std::map<unsigned int, std::vector<AnnotationPoint>>;

  Annotation();
  // A copy has the header (without pictureProperty and tempStartTick), the drag state, the frame,
  // the non-empty sub-models of the unbroken run from 0, and the same image, which both then share.
  Annotation(const Annotation& other);
  // As copying; this mark keeps its own pictureProperty and tempStartTick.
  Annotation& operator=(const Annotation& other);
  ~Annotation();

  // Sets the six fields; nothing else changes.
  void Init(AnnotationPen pen, AnnotationType type, AnnotationSubType subType,
            const std::string& userId, const std::string& userSubId, const std::string& nickname);

  // Adds a point to sub-model 0. A mark of two points (type 3, sub-types 10, 14, 15, 19 and 20)
  // keeps its first point and replaces the second one.
  void AddPoint(AnnotationPoint point);
  // Sub-model `subModel` becomes `newPoints`.
  void InsertPoints(unsigned int subModel, std::vector<AnnotationPoint> newPoints);
  // Removes all sub-models.
  void ClearPoints();
  // A copy of all sub-models.
  SubModels GetPoints() const;
  // 1 when the sub-model exists, an empty one included, else 0.
  int IsSubModelExist(unsigned int subModel) const;

  // Sets the id by which participants know the mark; for marks that no page has yet.
  void SetAnnotationId(const std::string& newId);
  std::string GetAnnotationId() const;

  // Stores `value`: 1 erases, 0 restores.
  void Erase(int value);
  // The value stored last.
  int IsErased() const;

  // Remembers where a drag starts, or has got to.
  void StartMoving(AnnotationPoint point);
  // Shifts the fractions of every point by the way from the remembered position to `point`, and
  // remembers `point`. Pixels follow with the next drawing.
  void Moving(AnnotationPoint point);

  // Loads the picture from a file; an empty path changes nothing. A file that cannot be read or
  // decoded leaves a picture that draws nothing and sub-type -1. Sets `subType` from the file's
  // content (21 JPEG, 22 PNG, 23 BMP, else -1) and `pictureProperty`.
  void SetPicture(const std::wstring& path, const std::string& property);
  // The same from a stream, read from its present position; a null stream changes nothing. Takes
  // over one reference of the stream.
  void SetPicture(IStream* stream, const std::string& property);

  // Drops the picture and all points; the mark stays usable.
  void Destroy();

  // Paints the mark on a surface of `size` pixels and stores the pixel positions of the points it
  // painted; gives 0 for null graphics, else 1. Points the mark must have to show: two in sub-model
  // 0. `lock` says that another thread may be adding points; the mark's lock is taken either way,
  // because a host may read any mark at any time.
  int Draw(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size, bool lock);
  // Outlines the selection frame, computed anew; 0 for null graphics, an erased mark or one without
  // a frame, else 1.
  int DrawRectEx(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size);
  // These two answer for the pixels as last drawn, and look at nothing but x and y of their
  // arguments. An erased mark answers like any other.
  //
  // 1 when an eraser that moves straight from p1 to p2 touches the mark: it crosses the centre line
  // (of an ellipse, the diamond within it, or it ends inside), else 0.
  int FindAnnotation(const AnnotationPoint& p1, const AnnotationPoint& p2) const;
  // 1 when the point hits the mark, with the pen's width counted in, else 0. With `useFrame`: when
  // it lies in the selection frame as last computed.
  int FindAnnotation(const AnnotationPoint& p, bool useFrame) const;
  // 1 when the mark, not erased, lies entirely inside the rectangle, edges included, whichever way
  // that was dragged out; else 0. The pen's width does not count.
  int IsInSelectRect(const RECT& rect) const;
  // Computes the selection frame: the box of the points' centres, at least 2 pixels each way. 0 for
  // a mark with fewer than two points in sub-model 0, else 1.
  int SetRectEx(CurrentAnnotPageSize size);

 private:
  friend class AnnotationPage;
  friend struct AnnotationTestAccess;

  struct Snapshot;  // what a copy takes over, read under the source's lock

  // Whether the map has the mark's present id for a key.
  bool IsNamedIn(const std::map<std::string, Annotation*>& annotations) const
      PARCHLET_EXCLUDES(mutex);
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
  // Makes the mark report to the table, under `slot`, how far it reaches, from now on.
  void ReportReach(ReachTable& table, std::size_t slot) PARCHLET_EXCLUDES(mutex);
  std::size_t ReachSlot() const PARCHLET_EXCLUDES(mutex);
  // A copy of sub-model 0, empty when there is none.
  std::vector<AnnotationPoint> FirstSubModel() const PARCHLET_EXCLUDES(mutex);
  // The pixel of the first point of sub-model 0, which there must be.
  POINT AnchorPixel() const PARCHLET_EXCLUDES(mutex);
  // Renumbers the points of sub-model 0; without one there is an empty list of that number, as from
  // any other empty fragment. Does not throw.
  void MoveFirstSubModelTo(unsigned int subModel) PARCHLET_EXCLUDES(mutex);
  // Takes over the sub-models of `fresh`, which there must be, in place of those of like numbers.
  // Does not throw.
  void ReplaceSubModels(SubModels& fresh) PARCHLET_EXCLUDES(mutex);
  // Cuts the mark to what a page keeps of a participant's; see MarkLimits.h. Does not throw.
  void LimitToBounds() PARCHLET_EXCLUDES(mutex);
  // Cuts the list to what the mark has room for as that sub-model; false when it has none for
  // another sub-model.
  bool LimitFragment(unsigned int subModel, std::vector<AnnotationPoint>& list) const
      PARCHLET_EXCLUDES(mutex);

  Snapshot TakeSnapshot() const PARCHLET_EXCLUDES(mutex);
  void CopyAnnotation(const Annotation& source) PARCHLET_EXCLUDES(mutex);
  void TakeOver(Snapshot& snapshot) PARCHLET_REQUIRES(mutex);
  void SetLoadedPicture(std::shared_ptr<Gdiplus::Image> loaded, std::string property)
      PARCHLET_EXCLUDES(mutex);
  void SetPictureProperty(std::string property) PARCHLET_REQUIRES(mutex);
  bool IsTwoPointKind() const PARCHLET_REQUIRES(mutex);
  int CalcPenWidth(int width) const;

  void DrawShapeAnnotation(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size)
      PARCHLET_REQUIRES(mutex);
  void DrawPictureAnnotation(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size)
      PARCHLET_REQUIRES(mutex);
  void DrawShapeLine(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size)
      PARCHLET_REQUIRES(mutex);
  void DrawShapeEllipse(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size)
      PARCHLET_REQUIRES(mutex);
  void DrawShapeRectangle(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size)
      PARCHLET_REQUIRES(mutex);
  void DrawShapeTriangle(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size)
      PARCHLET_REQUIRES(mutex);
  void DrawShapePath(Gdiplus::Graphics* graphics, CurrentAnnotPageSize size)
      PARCHLET_REQUIRES(mutex);
  bool HasTwoPoints() const PARCHLET_REQUIRES(mutex);
  // The box that the first two points span, after their conversion to pixels of `size`.
  RECT ConvertTwoPoints(CurrentAnnotPageSize size) PARCHLET_REQUIRES(mutex);
  // Brings the pixels of the connected sub-models up to date with `size`.
  void ConvertPath(CurrentAnnotPageSize size) PARCHLET_REQUIRES(mutex);
  void ConvertPathTail(CurrentAnnotPageSize size) PARCHLET_REQUIRES(mutex);
  int UpdateFrame(CurrentAnnotPageSize size) PARCHLET_REQUIRES(mutex);
  // Makes an empty sub-model 0 when there is none; false when there is no memory for it.
  bool EnsureFirstSubModel() PARCHLET_REQUIRES(mutex);

  // Declares the pixels of all points out of date, and their span.
  void PointsReplaced() PARCHLET_REQUIRES(mutex);
  // The same for a further sub-model alone, which costs no look at the others.
  void PointsAdded(const std::vector<AnnotationPoint>& list) PARCHLET_REQUIRES(mutex);
  void RecomputeSpan() PARCHLET_REQUIRES(mutex);
  void ExtendSpan(const AnnotationPoint& point) PARCHLET_REQUIRES(mutex);
  // The box of all points' stored pixels, ends included; left > right without points.
  RECT PixelBox() const PARCHLET_REQUIRES(mutex) {
    return {span.low.x, span.low.y, span.high.x, span.high.y};
  }
  void PublishReach() PARCHLET_REQUIRES(mutex);

  int FindShapeAnnotation(POINT from, POINT to) const PARCHLET_REQUIRES(mutex);
  int FindShapeAnnotation(POINT at, bool useFrame) const PARCHLET_REQUIRES(mutex);
  int FindPictureAnnotation(POINT from, POINT to) const PARCHLET_REQUIRES(mutex);
  int FindPictureAnnotation(POINT at, bool useFrame) const PARCHLET_REQUIRES(mutex);
  int FindLine(POINT from, POINT to) const PARCHLET_REQUIRES(mutex);
  int FindLine(POINT at) const PARCHLET_REQUIRES(mutex);
  int FindEllipse(POINT from, POINT to) const PARCHLET_REQUIRES(mutex);
  int FindEllipse(POINT at) const PARCHLET_REQUIRES(mutex);
  int FindRectangle(POINT from, POINT to) const PARCHLET_REQUIRES(mutex);
  int FindRectangle(POINT at) const PARCHLET_REQUIRES(mutex);
  int FindTriangle(POINT from, POINT to) const PARCHLET_REQUIRES(mutex);
  int FindTriangle(POINT at) const PARCHLET_REQUIRES(mutex);
  int FindPath(POINT from, POINT to) const PARCHLET_REQUIRES(mutex);
  int FindPath(POINT at) const PARCHLET_REQUIRES(mutex);
  int IsShapeInSelectRect(const RECT& rect) const PARCHLET_REQUIRES(mutex);
  int IsPictureInSelectRect(const RECT& rect) const PARCHLET_REQUIRES(mutex);
  int IsPointInRectEx(POINT point) const PARCHLET_REQUIRES(mutex);
  // Asks `hits` about the segments of a path that lie near `area`, until it says yes.
  template <class Hits>
  int AnySegment(const RECT& area, const Hits& hits) const PARCHLET_REQUIRES(mutex);
  void FillSegmentBoxes() const PARCHLET_REQUIRES(mutex);
  POINT FirstPixel() const PARCHLET_REQUIRES(mutex);
  POINT SecondPixel() const PARCHLET_REQUIRES(mutex);

  AnnotationPoint moveOrigin PARCHLET_GUARDED_BY(mutex) = {0, 0, -1.0, -1.0};
  SubModels points PARCHLET_GUARDED_BY(mutex);
  mutable Mutex mutex;
  RECT frame PARCHLET_GUARDED_BY(mutex) = {0, 0, 0, 0};
  // Shared by the copies of a mark; the last of them releases it.
  std::shared_ptr<Gdiplus::Image> picture PARCHLET_GUARDED_BY(mutex);

  // The least and the greatest of each number of all points, and how many points there are. What is
  // no number counts as 0, the pixel that it is drawn at.
  struct Span {
    AnnotationPoint low = {INT32_MAX, INT32_MAX, HUGE_VAL, HUGE_VAL};
    AnnotationPoint high = {INT32_MIN, INT32_MIN, -HUGE_VAL, -HUGE_VAL};
    std::size_t count = 0;
  };
  Span span PARCHLET_GUARDED_BY(mutex);
  // The pixels of a path's connected sub-models are those of this surface size, but for the points
  // of sub-model 0 past the first `convertedPoints`; {0, 0} when they are not.
  CurrentAnnotPageSize convertedSize PARCHLET_GUARDED_BY(mutex) = {0, 0};
  std::size_t convertedPoints PARCHLET_GUARDED_BY(mutex) = 0;
  // The pixels of those first points as the painter takes them: a frame of a page at rest reads
  // nothing else of a path. Meaningless while `convertedSize` is {0, 0}.
  std::vector<Gdiplus::Point> convertedPixels PARCHLET_GUARDED_BY(mutex);

  // Boxes of a path's segments, so many a box, list by list; filled by the first search that comes
  // near the mark, empty when out of date.
  mutable std::vector<RECT> segmentBoxes PARCHLET_GUARDED_BY(mutex);

  // Where the page that owns the mark looks before it asks the mark. Null until then.
  ReachTable* reachTable PARCHLET_GUARDED_BY(mutex) = nullptr;
  std::size_t reachSlot PARCHLET_GUARDED_BY(mutex) = 0;
  bool isOwned = false;  // a page owns the mark; the host thread's
};
