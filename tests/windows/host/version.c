/* version.c - a host in C that asks the DLL for its version. */
#include <stdio.h>

#include <parchlet/parchlet_c.h>

int main(void) {
  return puts(ParchletVersion()) >= 0 ? 0 : 1;
}
