#pragma once

#include <exception>
#include <system_error>

// Runs a façade operation and turns what it throws, memory that ran out, into `failure`. Only a
// mutex that cannot be locked is the host's to know.
template <class Result, class Operation>
Result Contain(Result failure, const Operation& operation) {
  try {
    return operation();
  } catch (const std::system_error&) {
    throw;
  } catch (const std::exception&) {
    return failure;
  }
}
