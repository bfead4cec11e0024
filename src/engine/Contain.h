#pragma once

#include <exception>
#include <system_error>
#include <type_traits>

// Runs an operation of the interface and returns `failure` if it throws, for instance
// std::bad_alloc. Only std::system_error, a thread or mutex that the system refuses, reaches the
// host.
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

// For operations without a result.
template <class Operation>
void Contain(const Operation& operation) {
  static_assert(std::is_void_v<std::invoke_result_t<Operation>>);
  Contain(false, [&] {
    operation();
    return true;
  });
}
