// Document.h - documents and pages, as all participants share them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>
#include <parchlet/Pictures.h>

namespace whiteboard {

// A mark as it was last sent.
struct SentMark {
  std::string userId;
  std::vector<std::unique_ptr<Annotation>> fragments;
};

struct Page {
  std::string id;
  std::string title;
  std::shared_ptr<const parchlet::Picture> content;  // null for blank paper
  std::string background;                 // path of the picture behind the marks, or empty
  std::map<std::string, SentMark> marks;  // by annotation id; those not erased

  // Returns the width divided by the height.
  double Aspect() const;
};

// Has one page at least.
struct Document {
  std::string id;
  std::string title;
  std::vector<Page> pages;
  std::size_t current = 0;

  Page& CurrentPage() { return pages[current]; }
  const Page& CurrentPage() const { return pages[current]; }
};

// Makes a page without content. Ids never repeat.
Page BlankPage();

// Makes a document of one blank page.
Document BlankDocument(std::size_t number);

// Opens what the paths name: all files together become one document, every folder becomes another,
// its pictures in the order of their names. Throws apps::Failure for a file that cannot be read or
// is no picture.
std::vector<Document> OpenContents(const std::vector<std::string>& paths);

}  // namespace whiteboard
