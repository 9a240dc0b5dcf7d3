#!/bin/bash
# What the step that joins modules makes, and what it refuses: join_modules_test.sh <join_modules>
set -euo pipefail
join=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
status=0

# Writes a module: module NAME TEXT
module() { printf '%s\n' "$2" > "$folder/$1"; }
fresh() {
  rm -f "$folder"/*
  module one.js "export const first = 1, second = { first: 2 };
export function greet(name) { return \`\${first} // { \${name} }\`; }"
}
# The modules are refused with these words: refused WORDS
refused() {
  if said=$("$join" "$folder/main.js" "$folder/joined" 2>&1); then
    echo "not refused: $1"
    status=1
  elif [[ $said != *"$1"* ]]; then
    echo "refused with: $said"
    echo "and not with: $1"
    status=1
  fi
}

fresh
module main.js "import { greet } from './one.js';

function twice() { return 1; }
greet(twice());
function twice() { return 2; }"
refused "main.js:5: declared twice: twice"
fresh
module main.js "import { greet, second } from './one.js';
greet(second.first); // not imported, and no code: first"
"$join" "$folder/main.js" "$folder/joined" || status=1
grep -q '^function greet' "$folder/joined" || { echo "a module lacks in what was joined"; status=1; }
if grep -qE '^(import|export)' "$folder/joined"; then echo "an import or export is left"; status=1; fi

module main.js "import { greet } from './two.js';
greet();"
refused "main.js: there is no two.js"
module main.js "import { greed } from './one.js';
greed();"
refused "main.js: one.js exports no greed"
module main.js "import { greet } from './one.js';

greet(first);"
refused "main.js:3: first is a name of one.js"
module main.js "import { greet } from './one.js';"
refused "main.js: imports greet and doesn't use it"
module main.js "import * as one from './one.js';"
refused "main.js:1: an import reads"
module main.js "export default 1;"
refused "main.js:1: an export is"
module main.js "import { greet } from './one.js';
const second = greet();"
refused "has a name second too"
module main.js "const own = 1;"
refused "one.js: is imported by nobody"
exit $status
