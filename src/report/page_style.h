#pragma once

#include <string_view>

namespace gorbex {

/// The style sheet of a report's page: light or dark as the reader's system, narrow on a phone,
/// without a background on paper. Text has a contrast of at least 4.5:1 with its background.
inline constexpr std::string_view kPageStyle = R"(
:root {
  color-scheme: light dark;
  --back: #ffffff; --text: #1c2128; --faint: #57606a; --line: #d0d7de; --box: #f6f8fa;
  --built: #1a7f37; --failed: #b42318; --fresh: #57606a; --warning: #8a4600; --critical: #6a30c0;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    --back: #15191e; --text: #e6edf3; --faint: #9aa6b2; --line: #3a434d; --box: #1d232a;
    --built: #56d364; --failed: #ff9a8d; --fresh: #b1bac4; --warning: #f0b35a; --critical: #c9a6ff;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0; background: var(--back); color: var(--text);
  font: 16px/1.5 system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif;
}
main { max-width: 75rem; margin: 0 auto; padding: 1rem; }
h1 { font-size: 1.6rem; line-height: 1.25; margin: .5rem 0; overflow-wrap: anywhere; }
h2 { font-size: 1.25rem; margin: 2rem 0 .5rem; border-bottom: 1px solid var(--line); }
h3 { font-size: 1.05rem; margin: 1.25rem 0 .25rem; overflow-wrap: anywhere; }
p { margin: .5rem 0; overflow-wrap: anywhere; }
.faint { color: var(--faint); }
.wide { overflow-x: auto; }
table { border-collapse: collapse; width: 100%; font-size: .9rem; }
caption { text-align: left; color: var(--faint); padding: .25rem 0; }
th, td { text-align: left; vertical-align: top; padding: .3rem 1rem .3rem 0;
  border-bottom: 1px solid var(--line); overflow-wrap: anywhere; }
th { font-weight: 600; }
th { overflow-wrap: break-word; }
.number { text-align: right; white-space: nowrap; overflow-wrap: normal; }
.state { white-space: nowrap; font-weight: 600; }
td.built { color: var(--built); } td.failed, td.error { color: var(--failed); }
td.up-to-date, td.skipped, td.not-built { color: var(--fresh); } td.warning { color: var(--warning); }
pre { background: var(--box); border: 1px solid var(--line); border-left: 4px solid var(--failed);
  border-radius: 4px; padding: .6rem; margin: .5rem 0; white-space: pre-wrap;
  overflow-wrap: anywhere; font: .85rem/1.45 ui-monospace, Consolas, "DejaVu Sans Mono", monospace; }
pre.plain { border-left: 1px solid var(--line); }
figure { margin: .5rem 0 1rem; }
svg { display: block; }
.timeline text { font: 12px system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif; }
.axis line { stroke: var(--line); } .axis text, text.lane { fill: var(--faint); }
svg rect.critical { fill: var(--critical); }
.timeline svg rect { stroke-width: 2; }
.legend { display: flex; flex-wrap: wrap; gap: .25rem 1rem; list-style: none; padding: 0;
  margin: .5rem 0; font-size: .9rem; }
.legend i { display: inline-block; width: 1.1em; height: .8em; margin-right: .4em; }
i.critical { height: 4px; margin-bottom: .3em; background: var(--critical); }
@media (max-width: 40rem) {
  main { padding: .75rem; }
  thead { position: absolute; clip-path: inset(50%); }
  tr { display: flex; flex-wrap: wrap; column-gap: 1rem; padding: .3rem 0;
    border-bottom: 1px solid var(--line); }
  th, td { padding: 0; border: 0; }
  tbody th { flex: 1 1 9rem; }
  td { flex: 1 1 100%; }
  td.state { flex: 0 0 6rem; }
  td.number { flex: 0 0 4rem; }
  td:empty:not(.number), td.extra { display: none; }
}
@media print {
  main { max-width: none; padding: 0; }
  .wide { overflow: visible; }
  .wide > svg { max-width: 100%; height: auto; }
  svg, i { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  tr, pre, figure { break-inside: avoid; }
  h2, h3 { break-after: avoid; }
}
)";

}  // namespace gorbex
