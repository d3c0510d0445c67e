#!/usr/bin/env bash
# Makes the pictures of the help book and of the README anew, from the windows as they are now. Those of the book are
# the larger half of the package: they get the best 256 colours of each (pngquant), which nobody sees.
#
#     tools/dev/pictures.sh [PROGRAM]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
most=$((150 * 1024)) # bytes; a window that is finer than that at scale 2 is shown at scale 1
book=resources/Pendra.help/Contents/Resources/English.lproj/pictures
readme=docs/images

program=${1:-$(./pendra --build | tail -n 1)}
album=$(mktemp -d)
trap 'rm -rf "$album"' EXIT
"$program" --tour "$album" 2>/dev/null

mkdir -p "$book" "$readme"
rm -f "$book"/*.png "$readme"/*.png
cp "$album"/{timer-window,report}-{light,dark}.png "$readme"
for plain in "$album"/*-light.png "$album"/*-dark.png; do
  grep -q "pictures/$(basename "$plain")" "$book/../PendraHelp1_0.htm" || continue
  [[ $plain != */day-* ]] || continue # they are of a day, not of the book
  fine=${plain%.png}@2x.png
  [ "$(stat -c %s "$fine")" -le $most ] || fine=$plain
  pngquant --nofs --speed 1 --strip --output "$book/$(basename "$plain")" 256 "$fine"
  # The book keeps the room of each picture free while it is loaded.
  read -r width height < <(od -An -j16 -N8 -tu4 --endian=big "$plain")
  sed -i -E "s|(src=\"pictures/$(basename "$plain")\") width=\"[0-9]+\" height=\"[0-9]+\"|\1 width=\"$width\" height=\"$height\"|" \
    "$book/../PendraHelp1_0.htm"
done
du -ch "$book"/*.png | tail -n 1
