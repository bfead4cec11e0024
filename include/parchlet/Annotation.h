// Annotation.h - one mark on a page, and the record of its identity and style.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/AnnotationTypes.h>
#include <parchlet/Platform.h>

// Identity and style of an annotation. A host fills the fields of a mark that it rebuilds from a
// message, before it hands the mark to the engine. Once a page owns the mark, the refresh thread
// reads them while it paints: the host then writes none but `tempStartTick`, and that one
// atomically. The operations of Annotation are safe at any time.
class PARCHLET_API AnnotationHeader {
 public:
  AnnotationHeader();
  AnnotationHeader(const AnnotationHeader& other);
  AnnotationHeader& operator=(const AnnotationHeader& other);
  ~AnnotationHeader();

  std::string annotationId;     // for a mark drawn or placed here, the page sets a new GUID
  std::string userId;           // the author; pages group marks by it
  std::string userSubId;        // the author's second identity, for instance a device
  std::string nickname;         // the author's display name, UTF-8, shown beside a fresh mark
  std::string pictureProperty;  // the string given to SetPicture
  std::int32_t hostData1 = 4;   // carried and copied, never interpreted
  std::int32_t hostData2 = 0;
  std::int32_t hostData3 = 0;
  // Of a fragment: the sub-model of the known mark that this object's sub-model 0 becomes. See
  // Parchlet::AddAnnotationFromRemote.
  std::int32_t subModelIndex = -1;
  std::int32_t order = 0;       // paint order on the page, ascending
  std::int32_t erased = 0;      // 1: neither drawn nor hit; the mark stays in its page
  std::int32_t tipVisible = 1;  // non-zero: the author's name may be shown
  AnnotationType type = AnnotationTypeDrawing;
  AnnotationSubType subType = AnnotationSubTypePath;
  AnnotationPen pen = {0xFF000000, 6, 0};
  // 0: permanent. Otherwise a GetTickCount64 time in milliseconds: a pending mark is erased 8000 ms
  // after it. A host may store this field in the mark that Parchlet::GetLocalAnnotation returns,
  // while that is being painted: through std::atomic_ref, or the compiler's own atomic store.
  std::uint64_t tempStartTick = 0;
};

// One mark: a free-hand path, a shape or a placed picture.
//
// Points are kept in sub-models: lists with the numbers 0, 1, 2, ... A mark drawn here has only
// sub-model 0; a mark that arrives in fragments has one sub-model for each fragment. A path's
// sub-models are drawn as one line, in ascending order, up to the first number that is missing.
//
// Owner: whoever creates it, until a page takes it over; from then on the page.
// Threads: the host thread may call every operation at any time, also while the refresh thread
// paints the mark. Each operation holds the mark's own lock while it runs.
// Errors: an operation that runs out of memory throws std::bad_alloc; the mark can still be used. A
// picture for which there is no memory counts as one that cannot be read.
class PARCHLET_API Annotation : public AnnotationHeader {
 public:
  // Lists of points by sub-model number.
  using SubModels = std::map<unsigned int, std::vector<AnnotationPoint>>;
  class PARCHLET_PRIVATE State;  // the library's own

  Annotation();
  // Copies the header without pictureProperty and tempStartTick, the drag position, the selection
  // frame, and the non-empty sub-models up to the first number that is missing. Both marks share
  // the image.
  Annotation(const Annotation& other);
  // Copies the same; this mark keeps its own pictureProperty and tempStartTick.
  Annotation& operator=(const Annotation& other);
  ~Annotation();

  // Sets these six fields of the header and nothing else.
  void Init(AnnotationPen pen, AnnotationType type, AnnotationSubType subType,
            const std::string& userId, const std::string& userSubId, const std::string& nickname);

  // Appends a point to sub-model 0. A kind of two points (type 3, and the sub-types 10, 14, 15, 19
  // and 20) keeps its first point and replaces the second one.
  void AddPoint(AnnotationPoint point);
  // Replaces the points of one sub-model, and creates it if it does not exist.
  void InsertPoints(unsigned int subModel, std::vector<AnnotationPoint> newPoints);
  // Removes all sub-models.
  void ClearPoints();
  // Returns a copy of all sub-models.
  SubModels GetPoints() const;
  // Returns 1 if the sub-model exists, even without points, else 0.
  int IsSubModelExist(unsigned int subModel) const;

  // Sets the id that identifies the mark among its author's. Only for marks that no page owns yet.
  void SetAnnotationId(const std::string& newId);
  // Returns the id.
  std::string GetAnnotationId() const;

  // Stores `value`: 1 erases the mark, 0 restores it.
  void Erase(int value);
  // Returns the value stored last.
  int IsErased() const;

  // Stores the position at which a drag starts.
  void StartMoving(AnnotationPoint point);
  // Shifts the fractions of every point by the distance from the stored position to `point`, and
  // stores `point`. The points' pixels change with the next Draw.
  void Moving(AnnotationPoint point);

  // Loads the picture from a file, and sets `pictureProperty` and, from the content, `subType` (21
  // JPEG, 22 PNG, 23 BMP, else -1). Does nothing for an empty path. A file that cannot be read or
  // decoded leaves a picture that draws nothing and sub-type -1.
  void SetPicture(const std::wstring& path, const std::string& property);
  // Does the same from a stream, read from its present position. Does nothing for null. Takes over
  // one reference to the stream.
  void SetPicture(IStream* stream, const std::string& property);

  // Removes the picture and all points. The mark stays usable.
  void Destroy();

  // Paints the mark on a surface of `size` pixels and updates the pixel positions of the points it
  // paints. Paints nothing for fewer than two points in sub-model 0. Returns 0 if `graphics` is
  // null, else 1. `lock` has no effect: the mark's lock is always taken, because the host may read
  // any mark at any time.
  int Draw(parchlet::graphics::Graphics* graphics, CurrentAnnotPageSize size, bool lock);
  // Computes the selection frame and outlines it. Returns 0 for null graphics, an erased mark, or
  // one without a frame, else 1.
  int DrawRectEx(parchlet::graphics::Graphics* graphics, CurrentAnnotPageSize size);
  // The two FindAnnotation operations test the pixels as last drawn. They use only x and y of their
  // arguments, and do not care whether the mark is erased.
  //
  // Returns 1 if the segment p1-p2, the way of an eraser, crosses the mark's centre line, else 0.
  // An ellipse is tested as the diamond between its box's edge centres, and is also hit if the
  // segment ends inside.
  int FindAnnotation(const AnnotationPoint& p1, const AnnotationPoint& p2) const;
  // Returns 1 if the point hits the mark, whose pen width counts, else 0. With `useFrame`, returns
  // 1 if the point lies in the selection frame as last computed.
  int FindAnnotation(const AnnotationPoint& p, bool useFrame) const;
  // Returns 1 if the mark is not erased and lies inside the rectangle, edges included, else 0. The
  // rectangle's corners may be in any order. The pen's width does not count.
  int IsInSelectRect(const RECT& rect) const;
  // Computes the selection frame: the box of the points, at least 2 pixels wide and high. Returns 0
  // for fewer than two points in sub-model 0, else 1.
  int SetRectEx(CurrentAnnotPageSize size);

 private:
  std::unique_ptr<State> state;
};
