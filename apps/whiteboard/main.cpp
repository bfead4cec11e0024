// main.cpp - parchlet-whiteboard: a whiteboard on an X11 desktop, alone, with a peer, or over the
// live desktop.
#include <exception>
#include <iostream>

#include "whiteboard/Application.h"
#include "whiteboard/Options.h"

int main(int argc, char** argv) {
  try {
    if (const auto options = whiteboard::ParseOptions(argc, argv)) {
      whiteboard::Application(*options).Run();
    }
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "parchlet-whiteboard: " << error.what() << '\n';
    return 2;
  }
}
