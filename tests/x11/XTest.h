// XTest.h - a test on a desktop of its own.
#pragma once

#include <optional>

#include <gtest/gtest.h>

#include "x11/XServer.h"

inline const std::string kSmallScreen = "-screen 0 640x480x24";

// Without an X server, the tests are skipped on a developer's machine, and fail in CI, which
// installs one.
class XTest : public testing::Test {
 protected:
  explicit XTest(const std::string& options = kSmallScreen) : server(options) {}

  void SetUp() override {
    if (!server.IsMissing()) {
      client.emplace(server.Display());
    } else if (std::getenv("CI") != nullptr) {
      GTEST_FAIL() << "no Xvfb starts";
    } else {
      GTEST_SKIP() << "no Xvfb: scripts/install-deps.sh test installs one";
    }
  }

  XServer server;
  std::optional<XClient> client;  // the host, or whoever else is on the desktop
};
