// Meeting.h - sends what one participant does to all of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>

#include "whiteboard/Document.h"
#include "whiteboard/Participant.h"

namespace whiteboard {

// Stands for the server of a meeting: assigns the paint order of finished marks, sends them as
// fragments to everybody including the author, and keeps them for documents that are opened later.
// All participants look at the same page. One thread.
class Meeting {
 public:
  // `newDocuments` has one document at least.
  explicit Meeting(std::vector<Document> newDocuments);

  // Shows the current document to the participant from now on, who must outlive the meeting.
  void Join(Participant& participant, SIZE size);

  const Document& CurrentDocument() const { return documents[current]; }
  // Returns a number that changes whenever the participants turn to another page.
  std::uint64_t Revision() const { return revision; }

  // Sends a mark that is finished or was moved.
  void Relay(const Annotation& mark);
  // Sends a mark that is still being drawn, to everybody except its author.
  void Preview(const Annotation& mark);
  void Erase(const std::vector<std::string>& annotationIds);
  // Erases the author's latest mark on the page, if any.
  void TakeBack(const std::string& author);
  // Erases the author's marks, or everybody's for an empty author.
  void Clear(const std::string& author);
  // Throws apps::Failure, and changes nothing, when the file is no picture.
  void SetBackground(const std::string& path);

  void NewPage();
  void DeletePage();  // does nothing when it is the only one
  void TurnBy(int pages);
  void NewDocument();
  void NextDocument();

 private:
  // Splits the mark for sending, with its author's nickname.
  SentMark Pack(const Annotation& mark);
  void EndGestures();
  Document& Shown() { return documents[current]; }
  void Open(std::size_t document);
  void TurnTo(std::size_t page);

  std::vector<Document> documents;
  std::size_t current = 0;
  std::vector<Participant*> participants;
  std::int32_t order = 0;  // of the last mark sent
  std::uint64_t revision = 1;
};

}  // namespace whiteboard
