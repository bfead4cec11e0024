#include "whiteboard/Meeting.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <parchlet/Fragments.h>

#include "whiteboard/Content.h"

namespace whiteboard {

namespace {

// Until the seat places the page in its window.
constexpr SIZE kFirstSize = {640, 400};

// A picture is copied whole: the copies share its pixels.
std::vector<std::unique_ptr<Annotation>> TakeApart(const Annotation& mark, std::int32_t order) {
  if (mark.type != AnnotationTypePicture) {
    return parchlet::SplitMark(mark, order);
  }
  std::vector<std::unique_ptr<Annotation>> whole;
  Annotation& picture = *whole.emplace_back(std::make_unique<Annotation>(mark));
  picture.order = order;
  picture.subModelIndex = 0;
  picture.pictureProperty = mark.pictureProperty;
  return whole;
}

}  // namespace

Meeting::Meeting(std::vector<Document> newDocuments) : documents(std::move(newDocuments)) {}

void Meeting::Join(Participant& participant, SIZE size) {
  participants.push_back(&participant);
  participant.OpenDocument(CurrentDocument(), size);
}

SentMark Meeting::Pack(const Annotation& mark) {
  const std::map<std::string, SentMark>& marks = Shown().CurrentPage().marks;
  const auto known = marks.find(mark.GetAnnotationId());
  const std::int32_t itsOrder =
      known != marks.end() ? known->second.fragments.front()->order : ++order;
  SentMark sent{mark.userId, TakeApart(mark, itsOrder)};
  for (const Participant* participant : participants) {
    for (const auto& fragment : sent.fragments) {
      if (participant->UserId() == mark.userId) {
        fragment->nickname = participant->Nickname();
      }
    }
  }
  return sent;
}

void Meeting::Relay(const Annotation& mark) {
  // Split it before sending: the first echo changes the author's mark.
  const std::string id = mark.GetAnnotationId();
  SentMark sent = Pack(mark);
  for (Participant* participant : participants) {
    for (const auto& fragment : sent.fragments) {
      participant->Receive(*fragment);
    }
  }
  Shown().CurrentPage().marks.insert_or_assign(id, std::move(sent));
}

void Meeting::Preview(const Annotation& mark) {
  std::map<std::string, SentMark>& marks = Shown().CurrentPage().marks;
  const auto known = marks.find(mark.GetAnnotationId());
  // A stroke grows at its end: all fragments before the last one have arrived.
  const std::size_t first = known != marks.end() ? known->second.fragments.size() - 1 : 0;
  SentMark sent = Pack(mark);
  for (Participant* participant : participants) {
    for (std::size_t i = first; participant->UserId() != mark.userId && i < sent.fragments.size();
         ++i) {
      participant->Receive(*sent.fragments[i]);
    }
  }
  marks.insert_or_assign(mark.GetAnnotationId(), std::move(sent));
}

void Meeting::Erase(const std::vector<std::string>& annotationIds) {
  std::map<std::string, SentMark>& marks = Shown().CurrentPage().marks;
  for (const std::string& id : annotationIds) {
    const auto known = marks.find(id);
    if (known == marks.end()) {
      continue;
    }
    for (Participant* participant : participants) {
      participant->Erase(known->second.userId, id);
    }
    marks.erase(known);
  }
}

void Meeting::TakeBack(const std::string& author) {
  const std::map<std::string, SentMark>& marks = Shown().CurrentPage().marks;
  std::string latest;
  std::int32_t highest = 0;
  for (const auto& [id, mark] : marks) {
    if (mark.userId == author && mark.fragments.front()->order > highest) {
      highest = mark.fragments.front()->order;
      latest = id;
    }
  }
  Erase({latest});
}

void Meeting::Clear(const std::string& author) {
  for (Participant* participant : participants) {
    participant->Clear(author);
  }
  std::erase_if(Shown().CurrentPage().marks, [&author](const auto& entry) {
    return author.empty() || entry.second.userId == author;
  });
}

void Meeting::SetBackground(const std::string& path) {
  LoadContent(path);
  for (Participant* participant : participants) {
    participant->SetBackground(path);
  }
  Shown().CurrentPage().background = path;
}

// A mark that somebody is drawing is finished on the page where it was begun.
void Meeting::EndGestures() {
  for (Participant* participant : participants) {
    participant->LeavePage();
  }
}

void Meeting::NewPage() {
  EndGestures();
  Document& document = Shown();
  document.pages.push_back(BlankPage());
  for (Participant* participant : participants) {
    participant->AddPage(document.pages.back(), kFirstSize);
  }
  TurnTo(document.pages.size() - 1);
}

void Meeting::DeletePage() {
  Document& document = Shown();
  if (document.pages.size() == 1) {
    return;
  }
  EndGestures();
  const std::string id = document.CurrentPage().id;
  document.pages.erase(document.pages.begin() + static_cast<std::ptrdiff_t>(document.current));
  TurnTo(std::min(document.current, document.pages.size() - 1));
  for (Participant* participant : participants) {
    participant->DeletePage(id);
  }
}

void Meeting::TurnBy(int pages) {
  EndGestures();
  const auto last = static_cast<int>(Shown().pages.size()) - 1;
  const int wanted = std::clamp(static_cast<int>(Shown().current) + pages, 0, last);
  TurnTo(static_cast<std::size_t>(wanted));
}

void Meeting::TurnTo(std::size_t page) {
  Document& document = Shown();
  document.current = page;
  for (Participant* participant : participants) {
    participant->TakeSelection();
    participant->TurnTo(document.CurrentPage().id);
  }
  ++revision;
}

void Meeting::NewDocument() {
  EndGestures();
  documents.push_back(BlankDocument(documents.size() + 1));
  Open(documents.size() - 1);
}

void Meeting::NextDocument() {
  if (documents.size() > 1) {
    EndGestures();
    Open((current + 1) % documents.size());
  }
}

void Meeting::Open(std::size_t document) {
  current = document;
  for (Participant* participant : participants) {
    participant->OpenDocument(CurrentDocument(), kFirstSize);
  }
  ++revision;
}

}  // namespace whiteboard
