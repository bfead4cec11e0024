// CommandLine.h - reads a program's command line.
#pragma once

namespace CLI {
class App;
}

namespace apps {

// Fills what the app's options name. Returns false when the person asked for help or the version,
// which has then been printed. Throws Failure, which tells of --help, for anything else.
bool ParseCommandLine(CLI::App& app, int argc, const char* const* argv);

}  // namespace apps
