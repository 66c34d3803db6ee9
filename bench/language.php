<?php
// The appends of bench/language_bench.cc in PHP: prints "NAME MILLISECONDS", the median of ROUNDS
// runs by the clock of the processor.
const ROUNDS = 9;

function appends($count) {
  $s = "";
  for ($i = 1; $i <= $count; $i++) $s .= "x...";
  return $s;
}

function processor_milliseconds() {
  $usage = getrusage();
  return ($usage["ru_utime.tv_sec"] + $usage["ru_stime.tv_sec"]) * 1000 +
         ($usage["ru_utime.tv_usec"] + $usage["ru_stime.tv_usec"]) / 1000;
}

$times = [];
for ($round = 0; $round < ROUNDS; $round++) {
  $start = processor_milliseconds();
  appends(200000);
  $times[] = processor_milliseconds() - $start;
}
sort($times);
echo "language_appends_200000 ", $times[intdiv(ROUNDS, 2)], "\n";
