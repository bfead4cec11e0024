// Meeting.h - relays what one participant does to all of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>

#include "Document.h"
#include "Participant.h"

namespace whiteboard {

// Stands for the server of a meeting: it gives finished marks their paint order, sends them to
// everybody as fragments, the author's own included, and keeps them for those who open a document
// later. All participants look at the same page. One thread's own.
class Meeting {
 public:
  // There is always a document.
  explicit Meeting(std::vector<Document> newDocuments);

  // The participant, who outlives the meeting's use, sees the current document from now on.
  void Join(Participant& participant, SIZE size);

  const Document& CurrentDocument() const { return documents[current]; }
  std::size_t DocumentCount() const { return documents.size(); }
  // Another number whenever the participants look at another page.
  std::uint64_t Revision() const { return revision; }

  // Sends a finished mark, or one that was moved.
  void Relay(const Annotation& mark);
  // Sends a mark that is still being drawn to everybody but its author.
  void Preview(const Annotation& mark);
  void Erase(const std::vector<std::string>& annotationIds);
  // Erases that author's latest mark on the page, if any.
  void TakeBack(const std::string& author);
  // Everybody's marks for an empty author.
  void Clear(const std::string& author);
  // Throws Failure, with no background changed, when the file holds no picture.
  void SetBackground(const std::string& path);

  void NewPage();
  void DeletePage();  // the last page of a document stays
  void TurnBy(int pages);
  void NewDocument();
  void NextDocument();

 private:
  // What carries the mark to everybody, with its author's nickname.
  SentMark Pack(const Annotation& mark);
  Document& Shown() { return documents[current]; }
  void Open(std::size_t document);
  void TurnTo(std::size_t page);

  std::vector<Document> documents;
  std::size_t current = 0;
  std::vector<Participant*> participants;
  std::int32_t order = 0;  // of the mark sent last
  std::uint64_t revision = 1;
};

}  // namespace whiteboard
