#!/usr/bin/env bash
# Usage: check_command.sh PROGRAM DATA_FOLDER
# A table of command lines: the exit status, a pattern that the output must have, one that the standard error must have
# (empty: it must be empty), and the line itself. Patterns are extended regular expressions.
set -uo pipefail
program=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/data"
ln -s "$program" "$work/bin/ormix"
cp "$2"/* "$work/data"
export PATH="$work/bin:$PATH"
cd "$work/data" || exit 1
failures=0 number=0

check() {  # STATUS OUTPUT ERRORS LINE
  number=$((number + 1))
  timeout 120 bash -o pipefail -c "$4" >"$work/out" 2>"$work/err" </dev/null
  local status=$?
  if [ "$status" -ne "$1" ] || ! grep -qaE -- "${2:-^}" <(cat "$work/out"; echo) ||
    { [ -n "$3" ] && ! grep -qaE -- "$3" "$work/err"; } || { [ -z "$3" ] && [ -s "$work/err" ]; }; then
    printf 'FAILED: %s\n  status %s, not %s\n  output: %s\n  errors: %s\n' "$4" "$status" "$1" \
      "$(head -c 400 "$work/out" | tr '\0' '?')" "$(head -c 400 "$work/err")"
    failures=$((failures + 1))
  fi
}

# Broken and hostile inputs. The bracket without its last facet is open.
head -n -8 part.stl >open.stl && echo 'endsolid' >>open.stl
printf '0 0, 4 0, 4 3\n1 1\nx y\n2 2\n' >malformed.txt
printf '\x89PNG\r\n\x1a\n\0\0\0\rIHDR\x00\x01\x86\xa0\x00\x01\x86\xa0\x08\x00\x00\x00\x00\x8d\x39\x54\x14\0\0\0\x0aIDAT\x78\x9c' >huge.png
base64 -d >labels.png <<'END'
iVBORw0KGgoAAAANSUhEUgAAAAQAAAACEAAAAAAKU/78AAAAFklEQVR42mNgYGDUYdRhYGcAISBgBwAFJABwfenayQAAAABJRU5ErkJggg==
END
ormix convert contours.txt -o contours.cbor
head -c 2000 contours.cbor >cut.cbor
head -c 100000 /dev/zero | tr '\0' '[' >deep.json
touch empty
yes '0 0, 1 0, 1 1' | head -n 20000 >many.txt
awk 'BEGIN { n = 400
  for (i = 0; i <= n; i++) for (j = 0; j <= n; j++) printf "v %d %d %.4f\n", i, j, 5 * sin(i / 9) * cos(j / 7)
  for (i = 0; i < n; i++) for (j = 0; j < n; j++) { a = i * (n + 1) + j + 1; print "f", a, a + 1, a + n + 2, a + n + 1 } }' >big.obj

# The command line itself.
check 2 '' '^usage: ormix SUBCOMMAND' 'ormix'
check 0 '^usage: ormix SUBCOMMAND' '' 'ormix --help'
check 0 '^ormix [0-9]+\.[0-9]+\.[0-9]+$' '' 'ormix --version'
check 2 '' '^ormix: there is no subcommand "mesure"' 'ormix mesure'
check 2 '' '^ormix measure: there is no option --foo; see "ormix measure --help"' 'ormix measure --foo part.stl'
check 2 '' 'option --format is "xml", not one of table jsonl csv' 'ormix measure --format=xml part.stl'
check 2 '' 'option -n is "-3", not a whole number from 1 on' 'ormix simplify part.stl -n -3 -o x.stl'
check 2 '' 'option --tolerance is "1e999", not a number from 0 on' 'ormix simplify contours.txt --tolerance 1e999 -o x.txt'
check 2 '' 'option --output needs a value' 'ormix view part.stl --output'
check 2 '' 'option --labels takes no value' 'ormix measure --labels=1 labels.png'
check 2 '' 'the format of the output is not named' 'ormix convert part.stl -o x.unknown'
check 0 '"file":"--odd"' '' 'cp part.stl ./--odd; ormix measure -- --odd'

# Inputs: several, the standard input, streams, what is wrong with one of them.
check 1 '"file":"part.stl".*"volume":5952,' '^ormix measure: none: it cannot be opened: No such file' 'ormix measure none part.stl'
check 0 '"file":"-".*"area":2672,"volume":5952,' '' 'cat part.stl | ormix measure'
check 0 '^2 2$' '' 'ormix convert contours.cbor --to jsonl | head -n 2 | ormix measure - | wc -lc | sed "s/ *\([0-9]*\) .*/\1 2/"'
check 1 '"item":1,.*"area":6,' 'malformed.txt: line 3: ' 'ormix measure malformed.txt'
check 1 '"item":3,' 'cut.cbor: .*[0-9]+ bytes are declared, only [0-9]+ remain' 'ormix measure cut.cbor'
check 1 '' 'empty: it is empty' 'ormix measure empty'
check 1 '' 'data: it is a directory' 'ormix measure ../data'
check 1 '' 'its format is not recognised' 'head -c 300 /dev/zero | ormix measure'
check 1 '' 'nested more than 2000 levels deep' 'ormix measure deep.json'
check 1 '' 'line 1: .*an entry was wanted' "echo '[1,2]' | ormix measure"
check 1 '' 'huge.png: it declares 100000 x 100000 pixels, more than' 'ormix measure --labels huge.png'
check 1 '' 'the output cannot be written: No space' 'ormix measure part.stl >/dev/full'
check 0 '^$' '' 'ormix measure many.txt | head -n 0'

# Results, against what the other programs of the project print and what is known.
check 0 '"region":1,"unit":"um","pixels":2456,"area":614,"centroid_x":20,' '' 'ormix measure -t otsu -s 0.5 -u um blobs.png'
check 1 '' '176 different values: say by --threshold' 'ormix measure blobs.png'
check 0 '"region":300,.*"pixels":2,' '' 'ormix measure labels.png'
check 0 '^area,item$' '' 'ormix measure contours.txt -f csv --fields area,item'
check 1 '"area"' 'no result has the key "aera"' 'ormix measure part.stl --fields area,aera'
check 0 '"inliers":36,"center_x":6\.00[67][0-9]*,"center_y":1\.96[0-9]*,"radius":6\.03' '' 'ormix fit circle -t 0.15 fits.txt'
check 0 '"inliers":3,.*"end":"not confident"' '' 'ormix fit circle -t 0.15 fits.txt'
check 0 '"inliers":3,.*"end":"not confident"' '' 'ormix fit circle -t 0.15 --report fits.txt'
check 2 '' 'the output is an archive, and "x.csv" ends in none of .cbor, .json, .jsonl' 'ormix fit circle fits.txt -o x.csv'
check 0 '"inliers":3[0-9],"center_x":6\.0.*"end":"confident"' '' 'ormix fit circle --method acontrario fits.txt'
check 0 '"radius":7.07[0-9]*e\+307}$' '' "printf '1e308 1\n2 3\n4 -1e308\n1 9\n' | ormix fit circle"
check 0 '"m31":1\.84[0-9]*e-05,.*"rms":[0-9.]*e-1[0-9]' '' 'ormix fit homography pairs.csv'
check 0 '"tx":10,"ty":20,"tz":30,"rms":0,' '' "printf '0 0 0 10 20 30\n1,2,3;11,22,33\n1 0 0\t11 20 30\n' | ormix fit translation"
check 1 '' 'set 1: a model "circle" is fitted to lines of 2 or 3 numbers, and these have 4' 'ormix fit circle pairs.csv'
check 1 '"points":2,' 'line 1: "nan" is not a finite number' "printf 'nan 1\n2 3\n4 9\n' | ormix fit line"
check 1 '' 'set 1: there is no column 5 of 4' 'ormix fit circle --columns 1,5 pairs.csv'
check 2 '' 'there is no model "sqare"' 'ormix fit sqare fits.txt'
check 0 '"deviation":0\.5,.*"outer_contacts":"2","inner_contacts":"1 3","imbalance":0,"optimum":"global"' '' \
  "printf '0 0\n1 0.5\n2 0\n' | ormix form straightness"
check 0 '"reference":"inscribed".*"radius":(1|1\.0000|0\.9999)' '' "printf '1 0\n0 1\n-1 0\n0 -1\n' | ormix form roundness -r inscribed"
check 1 '' 'set 1: flatness is measured of lines of 3 numbers, and these have 2' 'ormix form flatness fits.txt'
check 1 '' 'eEC_Collinear' "printf '0 0\n1 1\n2 2\n' | ormix form roundness"
check 2 '' 'flatness has no reference "inscribed"' 'ormix form flatness -r inscribed part.stl'
check 2 '' 'there is no form "flat"' 'ormix form flat part.stl'
check 0 '"class":"ormix::geom::Sphere3d<ormix::omReal64>".*"volume":4\.18879' '' \
  "printf '1 0 0\n0 1 0\n0 0 1\n-1 0 0\n' | ormix fit sphere -o - | ormix measure"
check 1 '"closed":false,"defects":[1-9][0-9]*,"boundary_edge":3,' '' 'ormix inspect open.stl'
check 0 '"triangles":20,"closed":true,.*"volume_after":5952' '' 'ormix inspect open.stl --repair -o repaired.ply'
check 0 '"defects":0' '' 'ormix inspect repaired.ply'
check 0 '"class":"ormix::geom::Polygon2d<ormix::omReal64>","version":1,"count":35' '' 'ormix inspect contours.cbor'
check 0 '"triangles_after":16,' '' 'ormix simplify part.stl -n 16 -o coarse.ply'

# What was converted there and back is the same.
check 0 '' '' 'ormix convert contours.cbor --to rings | ormix convert --from rings --to cbor | cmp - contours.cbor'
check 0 '' '' 'ormix convert part.stl --to ply | ormix convert --to off | ormix convert --to stl | cmp - <(ormix convert part.stl --to stl)'
check 0 '' '' 'ormix convert -t 118 blobs.png --to png >m.png && ormix convert m.png --polygons --to json | ormix convert --to png --size 240,160 | cmp - <(ormix convert m.png --to png --size 240,160)'

# A file that was there stays when its successor cannot be made, and when the user interrupts.
check 0 '^kept$' '' 'echo kept >old.stl; ormix convert contours.txt -o old.stl 2>/dev/null; cat old.stl'
check 130 '' '' 'echo kept >old.ply; timeout --preserve-status -s INT 2 ormix simplify big.obj --no-crossings -n 100 -o old.ply 2>/dev/null'
check 0 '^kept$' '' 'cat old.ply; ! ls | grep tmp-'

# On a terminal, results are a table, and bytes that are no text are not printed.
check 0 '^volume +5952' '' 'script -qec "ormix measure part.stl" /dev/null'
check 2 'the format stl is not for terminals' '' 'script -qec "ormix convert part.stl --to stl" /dev/null'

# Pages and pictures.
check 0 '<title>[^<]*part.stl' '' 'ormix view part.stl -o -'
check 0 '<svg .*width="800"' '' 'ormix view contours.txt --to svg -o -'
check 1 '' 'the plane and what is in space have no picture in common' 'ormix view part.stl contours.txt -o x.svg'

# Texts for other programs.
check 0 '^\.SH EXAMPLES$' '' 'ormix help --man'
check 0 'simplify' '' 'eval "$(ormix help --completion bash)"; COMP_WORDS=(ormix si) COMP_CWORD=1; _ormix; echo "${COMPREPLY[@]}"'
check 0 '^jsonl$' '' 'eval "$(ormix help --completion bash)"; COMP_WORDS=(ormix fit --format j) COMP_CWORD=3; _ormix; echo "${COMPREPLY[@]}"'
echo "$number command lines, $failures failed"
[ "$failures" -eq 0 ]
