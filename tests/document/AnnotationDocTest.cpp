#include "document/AnnotationDoc.h"

#include <gtest/gtest.h>

#include "page/AnnotationPage.h"

namespace {

AnnotationPage* NewPage(const std::string& id) {
  auto* page = new AnnotationPage;
  page->pageId = id;
  return page;
}

// Everything else about documents is compared by the model, which never adds a page again.
TEST(AnnotationDocTest, APageThatIsAddedAgainOrReplacedKeepsItsPlace) {
  AnnotationDoc doc;
  EXPECT_EQ(0, doc.AddPage(nullptr));
  AnnotationPage* first = NewPage("a");
  for (AnnotationPage* page : {first, NewPage("b"), first}) {
    EXPECT_EQ(1, doc.AddPage(page));
    EXPECT_EQ(page, doc.GetCurrentPage());
  }
  EXPECT_EQ(first, doc.GetPageAt(1));
  AnnotationPage* another = NewPage("a");
  EXPECT_EQ(1, doc.AddPage(another));
  EXPECT_EQ(another, doc.GetPageAt(1));
  EXPECT_EQ(another, doc.GetCurrentPage());
  EXPECT_EQ(0, doc.DeletePage("c"));
  EXPECT_EQ(2, doc.GetPageCount());
}

}  // namespace
