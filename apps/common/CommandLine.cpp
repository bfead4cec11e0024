#include "common/CommandLine.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "common/Input.h"

namespace apps {

bool ParseCommandLine(CLI::App& app, int argc, const char* const* argv) {
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      app.exit(error, std::cout, std::cerr);
      return false;
    }
    throw Failure(std::string(error.what()) + " (see --help)");
  }
  return true;
}

}  // namespace apps
