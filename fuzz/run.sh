#!/bin/sh
# run.sh BUILD_DIR SECONDS [HARNESS...]: runs each libFuzzer harness for
# SECONDS over a scratch copy of its seed corpus (fuzz/corpus/NAME plus the
# reproducers), and prints the runs, crashes and the exit status of each.
# With FUZZ_RUNS set, each harness stops after that many inputs instead
# (SECONDS then only caps the time).
# New inputs go to the scratch corpus under BUILD_DIR, not into git; merge
# them into fuzz/corpus with -merge=1 when they add coverage worth keeping.
set -u
bin=$1
seconds=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
names=${*:-"jpl_de kq moon_xyz planet_xyz delta_t meteor settings mpc_line tle"}
status=0
for name in $names; do
  work=$bin/work/$name
  mkdir -p "$work/corpus" "$work/artifacts"
  cp -n "$here/corpus/$name"/* "$work/corpus/" 2>/dev/null
  [ -d "$here/reproducers/$name" ] && cp -n "$here/reproducers/$name"/* "$work/corpus/" 2>/dev/null
  data=$here/../tests/data
  case $name in
    jpl_de|kq) cp -n "$data"/hostile/de_* "$data"/hostile/kq_* "$work/corpus/" ;;
    moon_xyz) cp -n "$data"/moon.xyz "$data"/hostile/kq_* "$work/corpus/" ;;
    planet_xyz) cp -n "$data"/hostile/planet_* "$work/corpus/" ;;
    delta_t) cp -n "$data"/kvxjdt.dat "$data"/hostile/jdt_* "$work/corpus/" ;;
    meteor) cp -n "$data"/hostile/meteor_* "$work/corpus/" ;;
  esac
  # stderr of the library (reader diagnostics) is closed: crash reports are
  # kept as artifacts and replayed by the ctest replay programs.
  "$bin/fuzz_$name" -max_total_time="$seconds" -runs="${FUZZ_RUNS:--1}" -timeout=10 -rss_limit_mb=1024 -close_fd_mask=2 \
    -artifact_prefix="$work/artifacts/" "$work/corpus" > "$work/log" 2>&1
  rc=$?
  runs=$(grep -o 'Done [0-9]* runs in [0-9]* second' "$work/log" | tail -1)
  found=$(ls "$work/artifacts" | wc -l)
  echo "$name: ${runs:-no summary}(s), exit $rc, $found artifacts"
  [ "$rc" -ne 0 ] || [ "$found" -ne 0 ] && status=1
done
exit $status
