#!/usr/bin/env bash
# Which lines and branches of the portable code the native tests reach: everything under src/ but platform/win32 and app.
# Prints the shares and, of each file, what is left; the pages are in build/coverage/pages/. Branches that only an
# exception of the library takes are not counted. Ends non-zero below 95 % of the lines or 90 % of the branches.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

mkdir -p build
{ cmake --preset coverage && cmake --build build/coverage; } >build/build-coverage.log 2>&1 ||
  { tail -n 20 build/build-coverage.log >&2; fail "the coverage build failed: see build/build-coverage.log"; }
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage --output-on-failure -j2 >build/coverage.log 2>&1 ||
  { tail -n 40 build/coverage.log >&2; fail "tests failed: see build/coverage.log"; }
mkdir -p build/coverage/pages
gcovr --root . --object-directory build/coverage --filter 'src/' --exclude 'src/platform/win32/' --exclude 'src/app/' \
  --exclude '.*_test\.cpp' --exclude '.*/fake.*' --exclude-throw-branches --exclude-unreachable-branches \
  --html-details build/coverage/pages/index.html --txt build/coverage/lines.txt --json-summary build/coverage/summary.json \
  --fail-under-line 95 --fail-under-branch 90 >build/coverage.log 2>&1 && code=0 || code=$?
cat build/coverage/lines.txt
python3 - <<'END'
import json
summary = json.load(open("build/coverage/summary.json"))
print("lines %.1f %% of %d, branches %.1f %% of %d" % (summary["line_percent"], summary["line_total"],
                                                       summary["branch_percent"], summary["branch_total"]))
END
exit "$code"
