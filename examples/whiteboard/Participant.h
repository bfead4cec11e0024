// Participant.h - one of the people at the whiteboard, as the engine knows them.
#pragma once

#include <string>
#include <vector>

#include <parchlet/Parchlet.h>

#include "Document.h"
#include "Tools.h"

namespace whiteboard {

// Owns an engine whose timer runs, with one document in it: the one that the participants look at.
// One thread's own. Every function is about the current page.
class Participant {
 public:
  // Frames go to `window`, which outlives this. A `transparent` participant's pages have no paper.
  Participant(std::string userId, std::string nickname, HWND window, bool transparent);

  const std::string& UserId() const { return userId; }
  const std::string& Nickname() const { return nickname; }
  void SetNickname(const std::string& newNickname);

  // Shows a document, with all its marks, in place of the one before.
  void OpenDocument(const Document& document, SIZE size);
  void AddPage(const Page& page, SIZE size);
  void DeletePage(const std::string& id);
  void TurnTo(const std::string& id);
  void Resize(SIZE size);

  // Drawing: press, move, release.
  void TakePen(const Style& style);
  bool Press(POINT point);
  void Move(POINT point);
  // The mark that is being drawn, which the page owns; null when there is none.
  const Annotation* Drawing();
  // Ends the drawing and gives its mark, which the page owns and which waits for its echo; null
  // when there was none or it has no extent and vanishes.
  const Annotation* Release(POINT point);

  // Selecting and moving the selection. A press on a mark starts to move it, with what is selected
  // besides; anywhere else, and wherever `band` says so, it starts to drag out a frame.
  bool StartSelecting(POINT point, bool band);
  void MoveSelecting(POINT point);
  // Gives the marks that the gesture moved.
  std::vector<const Annotation*> EndSelecting();
  // The ids of the selection, which is dropped.
  std::vector<std::string> TakeSelection();

  // The ids of the marks under an eraser that went from one point to the other.
  std::vector<std::string> FindErased(POINT from, POINT to);

  // Places a picture, which waits for its echo. Throws Failure when the file holds none.
  const Annotation& PlacePicture(const std::string& path);

  // What others, or the relay, decided.
  void Receive(const Annotation& fragment);
  void Erase(const std::string& author, const std::string& annotationId);
  // Everybody's marks for an empty author.
  void Clear(const std::string& author);
  // A file that holds no picture changes nothing.
  void SetBackground(const std::string& path);

  // Writes the page as its surface is, or as the screen shows it.
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
  Parchlet engine;
};

}  // namespace whiteboard
