#!/usr/bin/env bash
# The page of a run in a browser: report_test.sh GORBEX COMPILER STOREFRONT [FOLDER]
# Pictures of the page go to the folder, when one is named. Needs chromium; without it only the page's text is looked at.
set -euo pipefail
gorbex=$(realpath "$1") compiler=$(realpath "$2") storefront=$3 pictures=${4:-}

here=$(realpath "$(dirname "$0")")
. "$here/../cli/checks.sh"
end() { rm -rf "$scratch"; }
trap end EXIT

export GORBEX_PREFIX=$scratch/prefix
product=$GORBEX_PREFIX/drive_c/Storefront
mkdir -p "$GORBEX_PREFIX/drive_c"
cp -r "$storefront" "$product"
"$compiler" /regserver
file='C:\Storefront\Storefront.bpf'
sed -i 's/^End Function\r$/Next\r/' "$product"/Pricing/*.cls
expect 1 "$gorbex" build "$file" --yes --jobs 3 --skip-users-of-failed --report 'C:\Storefront\run.html'
page=$product/run.html
"$here/page_check.py" "$page" || fail "the page"
holds 'it uses C:\Storefront\Pricing' "$page"

command -v chromium >/dev/null || { echo "skipped: no chromium"; exit 77; }
browser() { # browser WIDTH LIGHT|DARK options...
  local width=$1 theme=$2
  shift 2
  [ "$theme" = dark ] && set -- --force-dark-mode --blink-settings=preferredColorScheme=0 "$@"
  timeout 120 chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --user-data-dir="$scratch/browser" \
    --window-size="$width,2400" --virtual-time-budget=2000 "$@" 2>"$scratch/browser.log"
}

# A page around it asks how wide the report becomes in a frame of so many pixels.
for width in 400 1400; do
  cat >"$scratch/frame.html" <<END
<iframe id="f" src="file://$page" style="width:${width}px;height:900px;border:0"></iframe>
<script>f.onload = () => document.title = f.contentDocument.documentElement.scrollWidth;</script>
END
  browser 1600 light --allow-file-access-from-files --dump-dom "file://$scratch/frame.html" >"$scratch/dom"
  holds "<title>$width</title>" "$scratch/dom"
  for theme in light dark; do
    [ -z "$pictures" ] || browser "$width" "$theme" --screenshot="$pictures/report-$width-$theme.png" "file://$page"
  done
done
