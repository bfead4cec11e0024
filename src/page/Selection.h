#pragma once

#include <map>
#include <string>

#include <parchlet/Annotation.h>

// The selection of one page and the gesture on it: a rubber band, or a move of what is selected.
//
// Owns the rubber band; the marks are the store's. One thread at a time: the page guards it with
// its lock.
class Selection {
 public:
  using Marks = std::map<std::string, Annotation*>;  // by annotation id

  Selection();

  const Marks& Selected() const { return selectedAnnotations; }
  void Clear() { selectedAnnotations.clear(); }
  // Selects these marks in place of the others, which `marks` holds afterwards.
  void Replace(Marks& marks) { selectedAnnotations.swap(marks); }

  // Whether a press on the mark moves the selection.
  bool Holds(const Annotation& annotation) const;
  // Starts a move of the selection from `point`.
  void StartMoving(const AnnotationPoint& point);
  // Selects `hit` alone, or nothing for null, and starts a rubber band at `anchor`. When memory
  // runs out, throws std::bad_alloc and changes nothing.
  void StartRubberBand(Annotation* hit, std::string userId, const AnnotationPoint& anchor);

  bool IsMoving() const { return movingSelection; }
  void MoveTo(const AnnotationPoint& point);

  // The rubber band, which is erased while it is hidden; its `userId` is the gesture's author.
  Annotation& RubberBand() { return selectRect; }
  const Annotation& RubberBand() const { return selectRect; }
  // Stretches the rubber band to `point` and returns what it spans, from the anchor.
  RECT Stretch(const AnnotationPoint& point);

  // Hides the rubber band; returns whether the gesture was a move. The selection stays.
  bool End();

 private:
  Marks selectedAnnotations;
  Annotation selectRect;
  bool movingSelection = false;
};
