#!/bin/sh
# Usage: run_malformed.sh PROGRAM
# Runs the demo on rings with two malformed lines and on a file that is not there; fails unless it says so.
program=$1
printf '0 0, 10 0, 10 5, 0 5\n1 1\n2 oops\n3 3\n\n4 4, 5 x\n' >malformed.txt
"$program" malformed.txt malformed.run >malformed.out 2>malformed.err
status=$?
cat malformed.out malformed.err
[ "$status" -eq 1 ] || { echo "exit status $status instead of 1"; exit 1; }
for text in 'malformed.txt:3: ' 'malformed.txt:6: ' '2 malformed line(s) skipped'; do
  grep -qF "$text" malformed.err || { echo "not said: $text"; exit 1; }
done
grep -qF 'malformed.txt: 2 rings' malformed.out || { echo 'the rest was not measured'; exit 1; }
"$program" no_such_file malformed.run && { echo 'a missing file went unnoticed'; exit 1; }
exit 0
