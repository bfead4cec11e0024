/* expect.h - says where an expectation of a C host failed and ends the program. */
#ifndef EXPECT_H
#define EXPECT_H

#include <stdio.h>
#include <stdlib.h>

#define EXPECT(condition)                                            \
  do {                                                               \
    if (!(condition)) {                                              \
      printf("%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
      exit(1);                                                       \
    }                                                                \
  } while (0)

#endif
