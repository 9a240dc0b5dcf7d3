#!/bin/bash
# scripts/count-tests on reports as ctest 3.25 writes them.
set -euo pipefail
count=$1
report=$(mktemp)
trap 'rm -f "$report"' EXIT

expect() {  # expect STATUS LINE, with the test cases on standard input
  { echo '<testsuite name="(empty)"'; echo '	>'; cat; echo '</testsuite>'; } > "$report"
  local status=0 line
  line=$("$count" "$report") || status=$?
  if [ "$status $line" != "$1 $2" ]; then
    echo "expected: $1 $2"
    echo "got:      $status $line"
    exit 1
  fi
}

expect 0 "2 passed, 0 failed, 0 skipped" << 'X'
	<testcase name="a" classname="a" time="0.1" status="run">
		<system-out>&lt;testcase status="fail"&gt; printed by a test</system-out>
	</testcase>
	<testcase name="b" classname="b" time="0.1" status="run">
	</testcase>
X
expect 1 "1 passed, 1 failed, 0 skipped" << 'X'
	<testcase name="a" classname="a" time="0.1" status="run">
	</testcase>
	<testcase name="b" classname="b" time="0.1" status="fail">
		<failure message=""/>
	</testcase>
X
expect 0 "1 passed, 0 failed, 3 skipped" << 'X'
	<testcase name="a" classname="a" time="0.1" status="run">
	</testcase>
	<testcase name="b" classname="b" time="0.1" status="notrun">
		<skipped message="SKIP_REGULAR_EXPRESSION_MATCHED"/>
	</testcase>
	<testcase name="c" classname="c" time="0.1" status="notrun">
		<skipped message="SKIP_RETURN_CODE=77"/>
	</testcase>
	<testcase name="d" classname="d" time="0" status="disabled">
	</testcase>
X
expect 1 "0 passed, 1 failed, 0 skipped" << 'X'
	<testcase name="a" classname="a" time="0" status="notrun">
		<skipped message="Unable to find executable"/>
	</testcase>
X
expect 1 "0 passed, 0 failed, 0 skipped" < /dev/null
