#pragma once

#include <map>
#include <string>

#include <parchlet/Platform.h>

class AnnotationPage;

// One open document: its pages, their order, and which of them is current. Owned by the engine;
// owns its pages. The host thread alone.
//
// Invariant: the page indexes of n pages are 1 to n, each once. Ids carry no order that a host
// sees.
class AnnotationDoc {
 public:
  AnnotationDoc();
  // Deletes every page.
  ~AnnotationDoc();
  AnnotationDoc(const AnnotationDoc&) = delete;
  AnnotationDoc& operator=(const AnnotationDoc&) = delete;

  std::string id;
  std::string creator;

  // Takes a page over, as the last one, and makes it current; 0 for null. A page that has the same
  // id is deleted, and the new one takes its place in the order.
  int AddPage(AnnotationPage* page);
  // Deletes a page and closes the gap in the order. When it was current, page 1 becomes current. 0
  // when there is no such page.
  int DeletePage(const std::string& pageId);

  void SetCurrentPage(AnnotationPage* page);
  AnnotationPage* GetCurrentPage() const { return currentPage; }
  int GetPageCount() const;

  // Each gives null when there is no such page.
  AnnotationPage* FindPage(const std::string& pageId) const;
  AnnotationPage* GetFirstPage() const;
  AnnotationPage* GetLastPage() const;
  AnnotationPage* GetPageAt(int index) const;
  AnnotationPage* GetNextPage() const;
  AnnotationPage* GetPreviousPage() const;

  // A copy of the map from id to page; the pages stay the document's.
  std::map<std::string, AnnotationPage*> GetPages() const { return pages; }

  // Writes every page, in the order of their ids, into the folder, as PNG files named from the
  // local time, after "prefix_" when there is a prefix; see AnnotationPage::SavePage for the last
  // argument. Gives the last page's result, 0 without pages. Every page is tried.
  int SaveDocument(const std::wstring& folder, const std::wstring& prefix,
                   const std::wstring& displayDevice);
  int SaveDocument(const std::wstring& folder, const std::wstring& prefix, HWND window);

 private:
  template <class Source>
  int SaveEveryPage(const std::wstring& folder, const std::wstring& prefix, const Source& source);

  std::map<std::string, AnnotationPage*> pages;  // owned
  AnnotationPage* currentPage = nullptr;         // one of `pages`
};
