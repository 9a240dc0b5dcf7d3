#!/bin/bash
# What the step that writes the control's interface refuses, and what it leaves alone:
# write_interface_test.sh <write_interface>
set -euo pipefail
write=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/forms" "$folder/pieces" "$folder/headers"
status=0

run() { "$write" "$folder/description" "$folder/forms" "$folder/pieces" "$folder/headers" 2>&1; }
describe() { cat > "$folder/description"; }
# The description is refused with these words: refused WORDS
refused() {
  if said=$(run); then
    echo "not refused: $1"
    status=1
  elif [[ $said != *"$1"* ]]; then
    printf 'refused with: %s\nand not with: %s\n' "$said" "$1"
    status=1
  fi
}

describe << 'END'
property 1 First: boolean = true
  What it is.

operation 2 Act(Where: string& = "", [Why: variant])
  What it does.
END
refused "Act: an argument that may be left out stands alone"

describe << 'END'
service Clock
  c: clock
  interface: {00112233-4455-6677-8899-AABBCCDDEEFF}
  Tells the time.

property 2 Clock.Hour: int32
  What it is.
END
refused "Clock.Hour isn't in the order of the numbers"

describe << 'END'
service Clock
  c: clock
  interface: {00112233-4455-6677-8899-AABBCCDDEEFF}
  Tells the time.

property 1 Watch.Hour: int32
  What it is.
END
refused "the service Watch isn't described just before"

describe << 'END'
service Clock
  c: clock
  Tells the time.
END
refused 'Clock has no "interface:"'

describe << 'END'
property 1 First: boolean = true
  store: 1, 2, default -1
  What it is.

property 2 Second: int32 = 7
  store: 2, 1
  What it is.

  More of it.

operation 3 Act(Where: string&): boolean
  What it does.
END
echo '@host_properties@' > "$folder/forms/host.h.in"
run || status=1
grep -q 'std::int32_t Second = 7;' "$folder/pieces/property_fields.inc" || { echo "no field"; status=1; }
grep -q '{u"First", &Properties::First, std::int16_t(-1), false}' "$folder/pieces/store_keys.inc" || { echo "no key"; status=1; }
[ "$(sed -n 2p "$folder/pieces/writing_order.inc")" = 'u"Second",' ] || { echo "not in the order of writing"; status=1; }
grep -q '/// What it is. More of it.' "$folder/headers/host.h" || { echo "no header from its form"; status=1; }

touch -d '2001-01-01' "$folder"/pieces/*
sed -i 's/= 7/= 8/' "$folder/description"
run || status=1
[ "$(find "$folder/pieces" -newermt 2002-01-01 -name property_fields.inc)" ] || { echo "a change isn't written"; status=1; }
[ -z "$(find "$folder/pieces" -newermt 2002-01-01 -name writing_order.inc)" ] || { echo "written anew as it was"; status=1; }

echo '@no_such_piece@' > "$folder/forms/host.h.in"
refused "there is no piece @no_such_piece@"
rm "$folder/forms/host.h.in"

describe << 'END'
property 1 First: boolean
  What it is.
property 1 Second: boolean
  What it is.
END
refused "description:3: Second has the number of another member"
describe << 'END'
property 1 First: boolen
  What it is.
END
refused 'description:1: First: there is no type "boolen"'
describe << 'END'
property 1 First: boolean
  store: 1, 1
  What it is.
property 2 Second: boolean
  store: 3, 2
  What it is.
END
refused "description:4: Second: the order of reading wants a 2"
describe << 'END'
property 1 First: boolean
  stored: 1, 1
  What it is.
END
refused 'description:2: there is no fact "stored"'
describe << 'END'
property 1 First: boolean
END
refused "description:1: First isn't described"
describe << 'END'
property First: boolean
  What it is.
END
refused "description:1: a number comes before the name"
describe << 'END'
event 2 Late()
  What has happened.
END
refused "description:1: events stand in the order of their numbers"
exit $status
