// Document.h - what the participants of a whiteboard have in common.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <replay/Fragments.h>

struct Picture;

namespace whiteboard {

// A mark as it was sent last.
struct SentMark {
  std::string userId;
  std::vector<replay::Fragment> fragments;
};

struct Page {
  std::string id;
  std::string title;
  std::shared_ptr<const Picture> content;  // null for blank paper
  std::string background;                  // path of the picture behind the marks, or empty
  std::map<std::string, SentMark> marks;   // by annotation id; those not erased

  // Width divided by height.
  double Aspect() const;
};

// There is always a page.
struct Document {
  std::string id;
  std::string title;
  std::vector<Page> pages;
  std::size_t current = 0;

  Page& CurrentPage() { return pages[current]; }
  const Page& CurrentPage() const { return pages[current]; }
};

// A page without content; ids never repeat.
Page BlankPage();

// A document of one blank page.
Document BlankDocument(std::size_t number);

// The documents that these paths ask for: files make one together, every folder one of its own, in
// the order of their names. Throws Failure for what is no picture or cannot be read.
std::vector<Document> OpenContents(const std::vector<std::string>& paths);

}  // namespace whiteboard
