#!/usr/bin/env bash
# Prints the lines and branches of each inner room that the tests run through, and the branches that
# they leave out. Usage: coverage.sh
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh test
programs=(parchlet_tests parchlet_model_tests parchlet_thread_tests parchlet_fault_tests)
mkdir -p build
{ cmake --preset coverage && cmake --build build/coverage --target "${programs[@]}"; } \
  >build/coverage.log 2>&1 || { tail -40 build/coverage.log >&2; exit 1; }

rm -f build/coverage/*.profraw
objects=()
for program in "${programs[@]}"; do
  LLVM_PROFILE_FILE=build/coverage/$program.profraw "build/coverage/tests/$program" \
    --gtest_brief=1 >build/coverage.log 2>&1 || { tail -40 build/coverage.log >&2; exit 1; }
  objects+=(${objects[0]+-object} "build/coverage/tests/$program")
done
llvm-profdata-14 merge -o build/coverage/profile build/coverage/*.profraw
llvm-cov-14 export -instr-profile build/coverage/profile "${objects[@]}" 2>build/coverage.log |
  python3 scripts/coverage_report.py
