// Participant.h - one participant's engine.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <parchlet/Parchlet.h>

#include "whiteboard/Document.h"
#include "whiteboard/Tools.h"

namespace whiteboard {

// Owns a running engine with one document: the one that all participants look at. Every function is
// about the current page. One thread.
class Participant {
 public:
  // Frames go to `window`, which must outlive this. With `transparent`, pages have no paper.
  Participant(std::string userId, std::string nickname, HWND window, bool transparent);

  const std::string& UserId() const { return userId; }
  const std::string& Nickname() const { return nickname; }
  void SetNickname(const std::string& newNickname);

  // Sets what ends the gesture under way; LeavePage calls it.
  void OnLeavingPage(std::function<void()> newEndGesture);
  // To be called before the participant is shown another page.
  void LeavePage();

  // Replaces the document by another one, with all its marks.
  void OpenDocument(const Document& document, SIZE size);
  void AddPage(const Page& page, SIZE size);
  void DeletePage(const std::string& id);
  void TurnTo(const std::string& id);
  void Resize(SIZE size);

  // Drawing: press, move, release.
  void TakePen(const Style& style);
  bool Press(POINT point);
  void Move(POINT point);
  // Returns the mark that is being drawn, owned by the page; null when there is none.
  const Annotation* Drawing();
  // Ends the drawing and returns its mark, owned by the page and pending until its echo. Returns
  // null when nothing was drawn or a shape has no extent; the shape is then dropped.
  const Annotation* Release(POINT point);

  // Selects, or moves the selection. A press on a mark starts to move it with the rest of the
  // selection. Anywhere else, and always with `band`, it starts to drag out a frame.
  bool StartSelecting(POINT point, bool band);
  void MoveSelecting(POINT point);
  // Ends the gesture and returns the marks that it moved.
  std::vector<const Annotation*> EndSelecting();
  // Drops the selection and returns its ids.
  std::vector<std::string> TakeSelection();

  // Returns the ids of the marks that an eraser touches between the two points.
  std::vector<std::string> FindErased(POINT from, POINT to);

  // Places a picture, pending until its echo. Throws apps::Failure when the file is no picture.
  const Annotation& PlacePicture(const std::string& path);

  // What the meeting decided.
  void Receive(const Annotation& fragment);
  void Erase(const std::string& author, const std::string& annotationId);
  // Erases the author's marks, or everybody's for an empty author.
  void Clear(const std::string& author);
  // Does nothing when the file is no picture.
  void SetBackground(const std::string& path);

  // Write the page as its surface is, or as the screen shows it; return false when that fails.
  bool ExportSurface(const std::string& path);
  bool ExportScreen(const std::string& path);
  bool ExportDocument(const std::string& folder);

 private:
  void PutOnPage(const Page& page);
  std::vector<std::string> SelectedIds();

  std::string userId;
  std::string nickname;
  HWND window;
  bool transparent;
  std::string documentId;
  std::string pageId;
  std::function<void()> endGesture = [] {};
  Parchlet engine;
};

}  // namespace whiteboard
