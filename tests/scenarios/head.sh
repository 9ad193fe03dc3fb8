# Sourced by what plays scenarios: what the comments at the head of $scenario say that it needs,
# in the array head and, with whole paths, files; the engine goes first on the search path.
#   # with: PATH...   files of the source tree $top, copied into the directory
#   # file: NAME      the file that the program is started with
#   # engine: PATH    the program that Invert finds by its own name (tests/engine/rkeldrin)
#   # exit: CODE      the exit code (0)
#   # needs: window   a PDF, so that it cannot be played without the real window
# shellcheck shell=bash
declare -A head=([with]='' [file]='' [engine]=tests/engine/rkeldrin [exit]=0 [needs]='')
while read -r mark word value && [[ $mark == \#* ]]; do
    [[ -z ${word:-} || ! -v head[${word%:}] ]] || head[${word%:}]=$value
done <"$scenario"
engine=$top/${head[engine]}
PATH=${engine%/*}:$PATH
# shellcheck disable=SC2206
files=(${head[with]})
files=("${files[@]/#/$top/}")
