#pragma once

#include <map>
#include <string>

#include <parchlet/Platform.h>

class AnnotationPage;

// One open document: its pages, their order, and which of them is current. The engine owns it; it
// owns its pages. Host thread only.
//
// Invariant: n pages have the page indexes 1 to n, each once. They do not depend on the order of
// the ids.
class AnnotationDoc {
 public:
  AnnotationDoc();
  // Deletes every page.
  ~AnnotationDoc();
  AnnotationDoc(const AnnotationDoc&) = delete;
  AnnotationDoc& operator=(const AnnotationDoc&) = delete;

  std::string id;
  std::string creator;

  // Takes ownership of a page, appends it and makes it current. If there is a page with the same
  // id, deletes that one and gives the new one its index. Returns 0 for null, else 1.
  int AddPage(AnnotationPage* page);
  // Deletes a page and closes the gap in the order. If it was current, page 1 becomes current.
  // Returns 0 if there is no such page, else 1.
  int DeletePage(const std::string& pageId);

  // `page` is one of the document's.
  void SetCurrentPage(AnnotationPage* page);
  AnnotationPage* GetCurrentPage() const { return currentPage; }
  int GetPageCount() const;

  // Each returns null if there is no such page. The document owns what they return.
  AnnotationPage* FindPage(const std::string& pageId) const;
  AnnotationPage* GetFirstPage() const;
  AnnotationPage* GetLastPage() const;
  AnnotationPage* GetPageAt(int index) const;
  AnnotationPage* GetNextPage() const;
  AnnotationPage* GetPreviousPage() const;

  // Returns the pages by id. The document owns them.
  std::map<std::string, AnnotationPage*> GetPages() const { return pages; }

  // Writes every page, in the order of the ids, into the folder as PNG files. A file name is
  // "prefix_" (unless the prefix is empty) and the local time; milliseconds are added until no
  // other page of this export has the name. For the last argument see AnnotationPage::SavePage.
  // Tries every page, whatever another one throws. Returns the last page's result, 0 without pages.
  int SaveDocument(const std::wstring& folder, const std::wstring& prefix,
                   const std::wstring& displayDevice);
  int SaveDocument(const std::wstring& folder, const std::wstring& prefix, HWND window);

 private:
  template <class Source>
  int SaveEveryPage(const std::wstring& folder, const std::wstring& prefix, const Source& source);

  std::map<std::string, AnnotationPage*> pages;  // owned
  AnnotationPage* currentPage = nullptr;         // one of `pages`
};
