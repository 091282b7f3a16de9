#!/bin/sh
# Draws the pictures of web/static from the sources beside this script. Needs rsvg-convert and
# ImageMagick; the drawn files are kept with the sources, so a build does not run this.
set -e
cd "$(dirname "$0")"
images=../static/images
mkdir -p $images/icon ../static/uploads/oemimage
# Names end in .gif because pages name them so, and the files are GIFs.
drawn=$(mktemp)
trap 'rm -f "$drawn"' EXIT
gif() {
  rsvg-convert "$1" -o "$drawn"
  convert "png:$drawn" -channel A -threshold 50% +channel -strip "$2"
}
for source in *.svg icon/*.svg; do
  case $source in
    favicon.svg) rsvg-convert "$source" -o $images/favicon.png ;;
    Zembrax_*) gif "$source" ../static/uploads/oemimage/"${source%.svg}".gif ;;
    *) gif "$source" "$images/${source%.svg}.gif" ;;
  esac
done
convert -size 1x1 xc:none -strip $images/1px.gif
convert $images/favicon.png -define icon:auto-resize=16,32,48 ../static/favicon.ico
