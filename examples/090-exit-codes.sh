#!/usr/bin/env bash
# Shows how a script goes by the exit status of the program: 0 all went well, 1 the input or the
# output is at fault, 2 the command line or a replay script is. Works in the current folder, which
# should be an empty one; NODELINE names the program.
set -u

nodeline=${NODELINE:-nodeline}
as_told=yes

# Runs the program. Sets `status` to how it ended and `said` to what stands on standard error.
run() {
    "$nodeline" "$@" >printed 2>messages
    status=$?
    said=$(<messages)
    printf 'nodeline %s\n    ended with %s' "$*" "$status"
    if [[ -n "$said" ]]; then printf ': %s' "$said"; fi
    printf '\n'
}

# Says what is not as the manual has it.
wrong() {
    printf '    which is wrong: %s\n' "$1"
    as_told=no
}

cat >calls.txt <<'END'
a graph as it should be
[nodes]
1 "main" 0 0
2 "parse" 0 0
[edges]
1 2 "reads"
END

cat >twice.txt <<'END'
two nodes under one id
[nodes]
1 "main" 0 0
1 "parse" 0 0
END

cat >missing.txt <<'END'
an edge to a node that is not there
[nodes]
1 "main" 0 0
[edges]
1 9 "calls"
END

cat >steps.txt <<'END'
node 1 0 40 20
recalc
turn 1 left
END

# All is well: nothing but the picture matters.
run render calls.txt -o calls.svg
if [[ "$status" -ne 0 || ! -s calls.svg ]]; then wrong "no picture"; fi

# A warning is told on standard error, and the picture is there all the same. Whoever takes warnings
# for errors looks whether anything was said.
run render twice.txt -o twice.svg
if [[ "$status" -ne 0 || ! -s twice.svg ]]; then wrong "no picture"; fi
case "$said" in
    "twice.txt:4: warning: "*) ;;
    *) wrong "no warning of line 4" ;;
esac

# A graph with an error: file, line and reason are told. The picture of the last time stays as it
# was, to the byte, and one that was not there is not begun.
cp calls.svg kept.svg
run render missing.txt -o kept.svg
if [[ "$status" -ne 1 ]]; then wrong "the status is not 1"; fi
case "$said" in
    "missing.txt:5: "?*) ;;
    *) wrong "no word of line 5" ;;
esac
if ! cmp -s calls.svg kept.svg; then wrong "the old picture has changed"; fi
run render missing.txt -o begun.svg
if [[ "$status" -ne 1 || -e begun.svg ]]; then wrong "something is left of a picture"; fi

# A file that is not there has no line to name.
run render nobody.txt -o nobody.svg
if [[ "$status" -ne 1 || "$said" != "nobody.txt: "?* ]]; then wrong "no word of the file"; fi

# An output that cannot be written is no better than an input that cannot be read.
run render calls.txt -o nowhere/calls.svg
if [[ "$status" -ne 1 ]]; then wrong "the status is not 1"; fi

# A wrong command line: whoever wrote the script has to mend it, whatever the graph may be.
run render calls.txt --colour red
if [[ "$status" -ne 2 || -z "$said" ]]; then wrong "the status is not 2"; fi

# A replay stops at the line that cannot be carried out. What was printed before it stays.
run replay steps.txt
if [[ "$status" -ne 2 || "$(<printed)" != "recalc true" ]]; then wrong "the status is not 2"; fi
case "$said" in
    "steps.txt:3: "?*) ;;
    *) wrong "no word of line 3" ;;
esac

# What a script needs in the end is mostly this: one question, three answers.
draw() {
    "$nodeline" render "$1" -o "$2" >printed 2>messages
    case $? in
        0) printf '%s: drawn\n' "$1" ;;
        1) printf '%s: skipped, %s\n' "$1" "$(<messages)" ;;
        *) printf 'cannot go on: %s\n' "$(<messages)"; return 1 ;;
    esac
}

for graph in calls.txt missing.txt; do
    if ! draw "$graph" "${graph%.txt}.svg"; then as_told=no; fi
done

[[ "$as_told" == yes ]]
