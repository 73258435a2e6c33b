#pragma once

namespace ScanKit::Exports {

/// All that the page's look is made of. It is light or dark with the reader's system, one column wide on a phone and several
/// on a screen, and long words and addresses wrap, so that nothing has to be scrolled sideways.
inline constexpr char htmlStyle[] = R"(
:root {
  color-scheme: light dark;
  --paper: #ffffff; --ink: #1a1a1c; --quiet: #55565c; --link: #0d4a94; --rule: #d6d6d9; --block: #f5f5f7;
}
@media (prefers-color-scheme: dark) {
  :root { --paper: #161719; --ink: #ececee; --quiet: #a9abb2; --link: #92bdff; --rule: #3a3b40; --block: #1f2023; }
}
* { box-sizing: border-box; }
html { -webkit-text-size-adjust: 100%; text-size-adjust: 100%; }
body {
  margin: 0 auto; padding: 1.5rem 1rem 4rem; max-width: 62rem;
  background: var(--paper); color: var(--ink);
  font: 1rem/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "Noto Sans", sans-serif;
  overflow-wrap: anywhere;
}
h1 { margin: 0 0 .25rem; font-size: 1.75rem; line-height: 1.2; }
h2 { margin: 2.5rem 0 .75rem; font-size: 1.25rem; line-height: 1.3; }
h3 { margin: 0 0 .5rem; font-size: 1.0625rem; line-height: 1.35; }
p { margin: .5rem 0; }
a { color: var(--link); text-underline-offset: .15em; }
a:focus-visible { outline: 2px solid var(--link); outline-offset: 2px; }
.project { font-size: 1.25rem; }
.quiet { color: var(--quiet); }
.skip { position: absolute; left: 1rem; top: -4rem; padding: .5rem .75rem; background: var(--paper); }
.skip:focus { top: .5rem; }
ul { margin: 0; padding: 0; list-style: none; }
nav ul { columns: 18rem; column-gap: 2rem; }
nav li { break-inside: avoid; padding: .25rem 0; }
li .quiet { display: block; font-size: .875rem; }
section { padding: 1.5rem 0 0; margin: 1.5rem 0 0; border-top: 1px solid var(--rule); }
section ul { columns: 24rem; column-gap: 2rem; }
section li { break-inside: avoid; padding: .125rem 0 .375rem; }
pre {
  margin: .75rem 0 0; padding: .875rem 1rem; background: var(--block); border-radius: .5rem;
  font: .8125rem/1.5 ui-monospace, "SF Mono", Menlo, Consolas, "DejaVu Sans Mono", monospace;
  white-space: pre-wrap; overflow-wrap: anywhere; tab-size: 4;
}
.remark { font-style: italic; }
@media print {
  body { max-width: none; padding: 0; }
  pre { padding: 0; background: none; }
  h2, h3 { break-after: avoid; }
}
)";

/// SHA-256 of the style in base 64: the page's policy lets this style be applied, and nothing else be loaded or run.
inline constexpr char htmlStyleDigest[] = "tlyCXIJyPwIzhYieqvRwXlrkFMEXWf3Bg10AiE9Nw5U=";

}  // namespace ScanKit::Exports
