// A mark as it must be, told in the plainest way, as an oracle for the engine's own.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>

// What a host can learn of an annotation. Nothing is cached and nothing is fast. Where a shape is
// hit, the engine's own object says: what is compared is how a page searches.
struct PlainMark {
  using SubModels = Annotation::SubModels;

  // Sub-models 0, 1, 2, ... up to the first missing one.
  unsigned ConnectedCount() const;
  bool HasTwoPoints() const;
  bool IsPicture() const { return type == AnnotationTypePicture; }
  bool IsPath() const;

  // A path keeps every point; other kinds their first and their latest.
  void AddPoint(const AnnotationPoint& point);
  // By the way from `origin`, which follows.
  void Move(const AnnotationPoint& to);
  // A fragment's points are sub-model 0; the page keeps them under the fragment's number.
  void Renumber(unsigned subModel);
  // What a copy of `source` has that is not this mark's own.
  void TakeOver(const PlainMark& source);
  // The pixels that painting on a surface of that size stores.
  void Draw(CurrentAnnotPageSize size);
  // False for a mark that has no frame.
  bool UpdateFrame(CurrentAnnotPageSize size);

  // A path is asked segment by segment.
  bool IsTouched(POINT from, POINT to) const;
  bool IsHit(POINT at) const;
  // All points of sub-model 0 fall on one pixel.
  bool IsDot() const;

  std::string id, userId, userSubId, nickname, pictureProperty;
  std::int32_t subModelIndex = -1;
  std::int32_t order = 0;
  std::int32_t erased = 0;
  std::int32_t tipVisible = 1;
  AnnotationType type = AnnotationTypeDrawing;
  AnnotationSubType subType = AnnotationSubTypePath;
  AnnotationPen pen = {0xFF000000, 6, 0};
  std::uint64_t tempStartTick = 0;
  AnnotationPoint origin = {0, 0, -1.0, -1.0};
  SubModels points;
  RECT frame = {0, 0, 0, 0};
  bool hasPicture = false;

  Annotation* object = nullptr;  // the engine's; null until it has shown it
  bool isOwned = false;          // by some page
};

// Edges included.
bool IsWithinBox(POINT at, const RECT& box);

using PlainMarkPtr = std::shared_ptr<PlainMark>;
