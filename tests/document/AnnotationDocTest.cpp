#include "document/AnnotationDoc.h"

#include <gtest/gtest.h>

#include "page/AnnotationPage.h"

// Everything else about documents is compared by the model, which never adds a page again.
TEST(AnnotationDocTest, APageThatIsAddedAgainOrReplacedKeepsItsPlace) {
  AnnotationDoc doc;
  EXPECT_EQ(0, doc.AddPage(nullptr));
  AnnotationPage* pages[] = {new AnnotationPage, new AnnotationPage, new AnnotationPage};
  pages[1]->pageId = "b";
  for (AnnotationPage* page : {pages[0], pages[1], pages[0], pages[2]}) {
    EXPECT_EQ(1, doc.AddPage(page));
    EXPECT_EQ(page, doc.GetCurrentPage());
    EXPECT_EQ(page == pages[1] ? pages[0] : page, doc.GetPageAt(1));
  }
  EXPECT_EQ(0, doc.DeletePage("c"));
  EXPECT_EQ(2, doc.GetPageCount());
}
