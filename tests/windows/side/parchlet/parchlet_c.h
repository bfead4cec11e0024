/* The C interface, and the window that it has in memory elsewhere: a window of the system, whose
 * pushes a test sees. */
#ifndef TESTS_WINDOWS_PARCHLET_C_H
#define TESTS_WINDOWS_PARCHLET_C_H

#include "../../../../include/parchlet/parchlet_c.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ParchletWindow ParchletWindow;

ParchletWindow* ParchletWindowNew(const ParchletRect* screenRect);
void ParchletWindowFree(ParchletWindow* window);
void* ParchletWindowHandle(const ParchletWindow* window);
int32_t ParchletWindowSetScreenRect(ParchletWindow* window, const ParchletRect* screenRect);
uint64_t ParchletWindowPresentCount(const ParchletWindow* window);
int32_t ParchletWindowWaitForPresent(const ParchletWindow* window, uint64_t count,
                                     int32_t timeoutMs);
int32_t ParchletWindowCopyFrame(const ParchletWindow* window, uint32_t* pixels, size_t capacity,
                                int32_t* width, int32_t* height);

#ifdef __cplusplus
}
#endif

#endif
