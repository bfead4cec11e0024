// A page as it must be, told in the plainest way.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "model/PlainMark.h"

// Marks, selection and gestures of one page, without any drawing: painting only leaves its traces
// in the marks. Size and pixels are those of the page's geometry; its surface is of no account.
struct PlainPage {
  using Marks = std::map<std::string, PlainMarkPtr>;

  // Where a confirmed mark stands in the paint order.
  struct Place {
    std::int32_t order;
    std::string userId, userSubId, id;
  };
  // The mark whose tip an author showed last, and when.
  struct Tip {
    std::string id;
    std::uint64_t shown;
  };

  explicit PlainPage(AnnotationPageInfo info) : initial(info), now(info) { band.erased = 1; }

  CurrentAnnotPageSize Size() const { return {now.width, now.height}; }
  bool Holds(POINT at) const;
  AnnotationPoint At(POINT pixel) const;
  // What a resize or a geometry update gives.
  int Update(AnnotationPageInfo info, bool resize);

  void AddLocal(const PlainMarkPtr& mark, const std::string& id);
  // True when the page keeps the very object. What another page owns is copied.
  bool AddRemote(const PlainMarkPtr& given);
  int Cancel(const std::string& id);
  PlainMarkPtr Confirmed(const std::string& userId, const std::string& id) const;

  std::string EraserAt(const std::string& userId, const std::string& userSubId, POINT at);
  std::vector<std::string> EraserAlong(const std::string& userId, const std::string& userSubId,
                                       POINT from, POINT to);
  int Erase(const std::string& userId, const std::string& id);
  int Clear(const std::string& userId, const std::string& userSubId);
  std::vector<std::string> DropSelection();

  int StartSelecting(const std::string& userId, const std::string& userSubId, POINT at);
  int MoveSelecting(POINT at);
  int EndSelecting();

  // The traces that a frame leaves, painted at that tick.
  void Paint(std::uint64_t tick);

  std::string id, creator;
  int index = 0;
  AnnotationPageInfo initial, now;
  std::map<std::string, Marks> confirmed;
  Marks pending;
  std::vector<Place> places;  // bottom first
  Marks selected;
  PlainMark band;
  bool isMoving = false;
  PlainMarkPtr drawing;
  PlainMarkPtr background;
  std::map<std::string, Tip> tips;

 private:
  std::vector<PlainMarkPtr> TopmostFirst(const std::string& userId,
                                         const std::string& userSubId) const;
  void AddPlace(const Place& place);
  void SelectWithin(const RECT& rect);
  bool IsTipShown(const PlainMark& mark, std::uint64_t tick);
};
