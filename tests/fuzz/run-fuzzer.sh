#!/usr/bin/env bash
# Runs one fuzz target for a while:
#   tests/fuzz/run-fuzzer.sh FUZZ_BUILD_DIR TARGET [SECONDS] [LIBFUZZER_OPTION...]
# e.g. tests/fuzz/run-fuzzer.sh build/test/tests/fuzz settings_file 3600 -jobs=2
# Starts from the seeds in tests/fuzz/corpus/TARGET (read only) and the inputs found by
# earlier runs in FUZZ_BUILD_DIR/corpus/TARGET, where new ones go. A failing input is
# saved in the current folder as crash-… or timeout-…; an input that takes over 10 s
# counts as a hang.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
target=$2
seconds=${3:-10}
shift $(($# < 3 ? $# : 3))
mkdir -p "$build/corpus/$target"
exec "$build/fuzz_$target" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
  -dict="$here/dict/$target.dict" "$@" "$build/corpus/$target" "$here/corpus/$target"
