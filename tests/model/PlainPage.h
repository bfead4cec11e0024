// A page and its marks as they must be, told in the plainest way: an oracle for the engine's own.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <parchlet/Annotation.h>

#include "annotation/PixelMath.h"

// The empty value where the map has no such key.
template <class Map>
const typename Map::mapped_type& ValueAt(const Map& map, const typename Map::key_type& key) {
  static const typename Map::mapped_type none{};
  const auto found = map.find(key);
  return found != map.end() ? found->second : none;
}

template <class Map>
std::vector<std::string> Keys(const Map& map) {
  std::vector<std::string> keys;
  keys.reserve(map.size());
  for (const auto& [key, value] : map) {
    keys.push_back(key);
  }
  return keys;
}

// What a host can learn of an annotation, with operations of the same names. Nothing is cached and
// nothing is fast. Where a shape is hit, the engine's own object says: what is compared is how a
// page searches.
struct PlainMark : AnnotationHeader {
  using PointList = std::vector<AnnotationPoint>;

  // A path keeps every point; other kinds their first and their latest.
  void AddPoint(const AnnotationPoint& point);
  void InsertPoints(unsigned subModel, const PointList& list) { points[subModel] = list; }
  void ClearPoints() { points.clear(); }
  void Erase(int value) { erased = value; }
  void StartMoving(const AnnotationPoint& at) { origin = at; }
  void Moving(const AnnotationPoint& to);
  int SetRectEx(CurrentAnnotPageSize size);

  bool HasTwoPoints() const { return ValueAt(points, 0).size() >= 2; }
  bool IsPath() const;
  // Sub-models 0, 1, 2, ... up to the first missing one.
  std::vector<PointList*> Connected();
  // A fragment's points are sub-model 0; the page keeps them under the fragment's number.
  void Renumber(unsigned subModel);
  // What a copy of `source` has that is not this mark's own.
  void TakeOver(const PlainMark& source);
  // The pixels that painting on a surface of that size stores.
  void Draw(CurrentAnnotPageSize size);
  // By a point, or by the way between two. A path is asked segment by segment.
  bool IsTouched(const std::vector<POINT>& path);
  // All points of sub-model 0 fall on one pixel.
  bool IsDot() const;

  AnnotationPoint origin = {0, 0, -1.0, -1.0};
  Annotation::SubModels points;
  RECT frame = {0, 0, 0, 0};
  bool hasPicture = false;

  Annotation* object = nullptr;  // the engine's; null until it has shown it
  bool isOwned = false;          // by some page
};

using PlainMarkPtr = std::shared_ptr<PlainMark>;

// Marks, selection and gestures of one page, without any drawing: painting only leaves its traces
// in the marks. Size and pixels are those of the page's geometry; its surface is of no account.
struct PlainPage {
  using Id = std::string;
  using Ids = std::vector<Id>;
  using Marks = std::map<Id, PlainMarkPtr>;

  // Where a confirmed mark stands in the paint order.
  struct Place {
    std::int32_t order;
    Id userId, userSubId, id;
  };
  // The mark whose tip an author showed last, and when.
  struct Tip {
    Id id;
    std::uint64_t shown;
  };

  explicit PlainPage(AnnotationPageInfo info) : initial(info), now(info) { band.erased = 1; }

  CurrentAnnotPageSize Size() const { return {now.width, now.height}; }
  bool Holds(POINT at) const { return DoMeet(BoxOf(at, at), {0, 0, now.width, now.height}); }
  AnnotationPoint At(POINT pixel) const { return PagePoint(pixel, Size()); }
  // What a resize or a geometry update gives.
  int UpdatePage(AnnotationPageInfo info, bool resize);

  // Under `kNewId` until the engine's id is known.
  void AddLocal(const PlainMarkPtr& mark);
  static constexpr const char* kNewId = "new";
  // True when the page keeps the very object. What another page owns is copied.
  bool AddRemote(const PlainMarkPtr& given);
  int CancelAnnotation(const Id& id);
  PlainMarkPtr GetAnnotation(const Id& userId, const Id& annotationId) const {
    return ValueAt(ValueAt(confirmed, userId), annotationId);
  }
  int FindAnnotation(const Id& userId, const Id& annotationId) const {
    return GetAnnotation(userId, annotationId) != nullptr ? 1 : 0;
  }
  PlainMarkPtr GetLocalAnnotation(const Id& annotationId) const {
    return ValueAt(pending, annotationId);
  }

  // For a path of one point the topmost mark's id or the empty one, else all of them.
  Ids EraseAnnotations(const Id& userId, const Id& userSubId, std::vector<POINT> path);
  int EraseAnnotation(const Id& userId, const Id& annotationId);
  int EraseAnnotationFromRemote(const Id& userId, const Id& annotationId) {
    return EraseAnnotation(userId, annotationId);
  }
  int ClearAnnotations(const Id& userId, const Id& userSubId);
  Ids EraseSelectedAnnotations() { return Keys(std::exchange(selected, {})); }

  Marks GetSelectedAnnotations() const { return selected; }
  int StartSelecting(const Id& userId, const Id& userSubId, POINT at);
  int MoveSelecting(POINT at);
  int EndSelecting();

  // The traces that a frame leaves, painted at that tick.
  void Paint(std::uint64_t tick);

  Id id, creator;
  int index = 0;
  AnnotationPageInfo initial, now;
  std::map<Id, Marks> confirmed;
  Marks pending;
  std::vector<Place> places;  // bottom first
  Marks selected;
  PlainMark band;
  bool isMoving = false;
  PlainMarkPtr drawing;
  PlainMarkPtr background;
  std::map<Id, Tip> tips;

 private:
  std::vector<PlainMarkPtr> TopmostFirst(const Id& userId, const Id& userSubId) const;
  bool IsTipShown(const PlainMark& mark, std::uint64_t tick);
};
