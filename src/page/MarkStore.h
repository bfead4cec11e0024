#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "annotation/AnnotationState.h"
#include "annotation/ReachTable.h"

// A mark's place in its page's painting order, for as long as the page lives.
struct PaintOrderEntry {
  std::int32_t order;  // the annotation's `order` when the entry was made
  std::string userId;
  std::string userSubId;
  std::string annotationId;
  Annotation* annotation;  // the confirmed mark of that author and id
  std::size_t number = 0;  // how many entries the page had made before it

  bool IsAbove(const PaintOrderEntry& other) const {
    return order != other.order ? order > other.order : number > other.number;
  }
};

// Whose marks a search looks at. An empty `userId` stands for all authors, whatever `userSubId`
// says; otherwise the author must be that one, and, unless `userSubId` is empty, that second
// identity.
struct AuthorFilter {
  const std::string& userId;
  const std::string& userSubId;

  bool Passes(const PaintOrderEntry& entry) const {
    return userId.empty() ||
           (entry.userId == userId && (userSubId.empty() || entry.userSubId == userSubId));
  }
};

// The marks of one page, the order in which confirmed ones are painted, and where they are.
//
// Owns every mark until it is destroyed, erased ones included; a pending one until its change ends.
// One thread at a time: the page guards it with its lock. When memory runs out, an operation throws
// std::bad_alloc and changes nothing.
class MarkStore {
 public:
  using Marks = std::map<std::string, Annotation*>;  // by annotation id

  MarkStore() = default;
  ~MarkStore();
  MarkStore(const MarkStore&) = delete;
  MarkStore& operator=(const MarkStore&) = delete;

  // --- What is stored ---

  // Confirmed marks by author and id. A mark stays while the page lives.
  const std::map<std::string, Marks>& UserAnnotations() const { return userAnnotations; }
  // Marks drawn here and not confirmed yet, and backup copies of moved marks.
  const Marks& LocalAnnotations() const { return localAnnotations; }
  // Sorted by `order`; equal ones in the order in which they came.
  const std::list<PaintOrderEntry>& PaintOrder() const { return paintOrder; }
  // The author's confirmed marks, or null.
  const Marks* FindAuthor(const std::string& userId) const;
  Annotation* FindConfirmed(const std::string& userId, const std::string& annotationId) const;
  Annotation* FindPending(const std::string& annotationId) const;

  // --- What comes and goes ---

  // Takes over a mark drawn here under a fresh id; it is pending from now on.
  void AddLocal(Annotation* annotation);

  struct Merged {
    bool isKept = false;                // the store took over the object itself
    const Annotation* ended = nullptr;  // the pending object that was deleted; for comparison only
  };
  // Merges a mark that arrived; see AnnotationPage::AddAnnotation. `size` is the surface size that
  // the mark's frame is computed for.
  Merged Merge(Annotation* annotation, CurrentAnnotPageSize size);
  // Keeps a backup copy of each of the marks that has no pending change.
  void AddBackups(const Marks& moved);
  // Reverts the pending change of that id and deletes the pending object.
  void Cancel(const std::string& annotationId);
  // Deletes every mark.
  void DestroyAnnotations();

  // --- Searching: confirmed marks that are not erased ---

  // The topmost mark that the point hits, or with `useFrame` whose frame holds it; or null.
  Annotation* FindAtPoint(const AuthorFilter& filter, const AnnotationPoint& point,
                          bool useFrame) const;
  // The marks that the segment touches, topmost first.
  std::vector<Annotation*> FindOnSegment(const AuthorFilter& filter, const AnnotationPoint& from,
                                         const AnnotationPoint& to) const;
  // Adds the author's marks, or everybody's for an empty `userId`, that lie within the rectangle.
  // Of two authors' marks with one id the later author's is kept.
  void AddWithin(const std::string& userId, const RECT& rect, Marks& found) const;

 private:
  struct Arrival;  // a remote mark on its way into the store

  void Prepare(Arrival& arrival, Annotation* annotation);
  // Does not throw.
  void Enter(Arrival& arrival, CurrentAnnotPageSize size);
  void EndPending(const Arrival& arrival);
  std::size_t AddSlot();
  bool GetsPlace(const Arrival& arrival) const;
  void InsertPaintEntry(std::list<PaintOrderEntry>& entry);
  // What `nearSlots` names and the filter passes.
  std::vector<const PaintOrderEntry*> TopmostFirst(const AuthorFilter& filter) const;

  std::map<std::string, Marks> userAnnotations;  // owned
  std::list<PaintOrderEntry> paintOrder;
  ReachTable reachTable;
  // By the slots of `reachTable`, each mark's entry in `paintOrder`, or null.
  std::vector<const PaintOrderEntry*> entries;
  Marks localAnnotations;  // owned
  // The slots that a search has to ask; kept, so that a search does not allocate for them.
  mutable std::vector<std::size_t> nearSlots;
};
