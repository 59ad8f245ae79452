#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Records from a sound server of its own, without any sound hardware: a null output plays a wave file into its monitor,
# and the station listens there through ALSA. Twice in between the server dies and comes back.
#   scripts/sound_loop.sh [SECONDS]
# Needs the Debian packages pulseaudio, pulseaudio-utils and libasound2-plugins, and a build of tarvoltd, tvd and tv-uds.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-30}"
bin="$PWD/build/release/bin"
folder="$(mktemp -d)"
chmod 700 "$folder"
export HOME="$folder" XDG_RUNTIME_DIR="$folder" PULSE_SERVER="unix:$folder/pulse.sock"
server=""
station=""
player=""
finish() {
  for process in "$player" "$station" "$server"; do
    [ -n "$process" ] && kill "$process" 2>/dev/null || true
  done
  wait 2>/dev/null || true
  rm -rf "$folder"
}
trap finish EXIT

cat >"$folder/pa.conf" <<CONF
load-module module-null-sink sink_name=rec rate=44100 format=s16le channels=2 norewinds=1
load-module module-native-protocol-unix auth-anonymous=1 socket=$folder/pulse.sock
set-default-sink rec
set-default-source rec.monitor
CONF
printf 'pcm.!default { type pulse }\nctl.!default { type pulse }\n' >"$folder/.asoundrc"

start_server() {
  rm -f "$folder/pulse.sock"
  pulseaudio -n -F "$folder/pa.conf" --daemonize=no --use-pid-file=no --exit-idle-time=-1 --disable-shm=yes \
    --realtime=no --high-priority=no --log-target="file:$folder/pa.log" 2>/dev/null &
  server=$!
  for _ in $(seq 100); do
    pactl info >/dev/null 2>&1 && break
    sleep 0.1
  done
  (while paplay -d rec "$folder/receiver.wav" 2>/dev/null; do :; done) &
  player=$!
}

"$bin/tv-uds" --wav "$folder/receiver.wav"
start_server
"$bin/tarvoltd" --home "$folder/station" --start --seconds "$seconds" \
  --set Dsrc0=1 --set Dsrc1=2 --set TimerType=1 --set SampleRate=100 --set PromptBeforeSaving=False \
  --set ShowMsgBox=False >"$folder/station.log" 2>"$folder/station.err" &
station=$!
for _ in 1 2; do
  sleep $((seconds / 4))
  kill "$player" "$server"
  wait "$server" 2>/dev/null || true
  sleep 2
  start_server
done
used=0
ticks="$(getconf CLK_TCK)"
while kill -0 "$station" 2>/dev/null; do
  used="$(awk -v t="$ticks" '{ print ($14 + $15) / t }' "/proc/$station/stat" 2>/dev/null || echo "$used")"
  sleep 0.5
done
status=0
wait "$station" || status=$?
station=""
cat "$folder/station.log"
echo "Processor time of the station: $used of $seconds seconds"
echo "Standard error of the station: $(wc -c <"$folder/station.err") bytes"
file="$(find "$folder/station/Data" -name '*.tvd' ! -name 'localdatabackup.tvd' | head -n 1)"
"$bin/tvd" info "$file" | grep -iE "samples|sound|buffer" || true
"$bin/tvd" dump "$file" --csv | head -n 8
exit "$status"
