#!/usr/bin/env bash
# usage: run_case.sh WTARN CASE [--update]
# Runs a script of the host's language in an empty folder and compares what came of it with CASE's golden file beside
# it: standard output, diagnostics, exit status and the files that it names. Lines of the case that begin with "#:"
# are for this runner:
#   #: args ...     further arguments for the host      #: shell ...   a command before the run
#   #: then ...     a command after the run, its output compared too
#   #: file NAME    a file whose contents are compared  #: only native  no case for Windows
# A host whose name ends in .sh runs the Windows program.
set -u
wtarn=$(realpath "$1") case=$(realpath "$2") golden=${case%.case}.golden
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
directive() { sed -n "s/^#: $1 //p" "$case"; }
case $wtarn in
  *.sh) [ "$(directive only)" != native ] || { echo "only on Linux"; exit 77; } ;;
esac
cp "$case" case.txt
export WTARN=$wtarn
eval "$(directive shell)" || { echo "the case's own commands failed"; exit 1; }
eval "args=($(directive args | tr '\n' ' '))"
"$wtarn" "${args[@]}" case.txt >out.txt 2>errors.txt </dev/null
status=$?
{
  cat out.txt
  echo "== exit $status"
  cat errors.txt
  directive file | while read -r name; do
    echo "== file $name"
    cat "$name" 2>&1
  done
  directive then | while read -r command; do
    echo "== $command"
    eval "$command" 2>&1
  done
} | sed 's/\r$//' >result.txt
if [ "${3:-}" = --update ]; then
  cp result.txt "$golden"
  exit 0
fi
diff -u --label golden --label result "$golden" result.txt
