// The parts of a report's page that are the same for every report: how it looks, and what its controls do.
#pragma once

#include <string_view>

namespace zorvel {

// A table of rows hides its headings, which the bar above shows for all tables; on paper each shows its own.
// What is out of sight is not laid out (content-visibility), so that long reports open and filter quickly;
// --n is the number of rows of a block, from which its height is guessed. Groups must not have
// content-visibility as well: Chromium never comes back when some hundreds of them change at once.
inline constexpr std::string_view kPageStyle = R"css(
:root {
  color-scheme: light dark;
  --paper: #fff; --text: #1c2530; --faint: #56616e; --title: #123e6b; --band: #dfe8f2; --light: #eff4f9;
  --rule: #d5dce4; --bar: #4a86c5; --hover: #f5f8c8;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #16191d; --text: #e3e6ea; --faint: #a0a9b4; --title: #9cc7f2; --band: #2a3542; --light: #20272f;
    --rule: #343d47; --bar: #5b9bdc; --hover: #363a1c;
  }
}
* { box-sizing: border-box; }
[hidden] { display: none !important; }
body { margin: 0 1.5rem 2rem; background: var(--paper); color: var(--text);
  font: 0.875rem/1.4 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; font-variant-numeric: tabular-nums; }
h1 { margin: 1.2rem 0 0.2rem; font-size: 1.6rem; color: var(--title); overflow-wrap: anywhere; }
h2, h3, h4, h5, h6 { margin: 0; font-size: 1rem; }
p { margin: 0.3rem 0; white-space: pre-line; overflow-wrap: anywhere; }
footer { color: var(--faint); }
dl { display: flex; flex-wrap: wrap; gap: 0.4rem 2.2rem; margin: 0.8rem 0; }
dl div { max-width: 100%; }
dt { color: var(--faint); font-size: 0.8rem; }
dd { margin: 0; white-space: pre-line; overflow-wrap: anywhere; }
.totals dd { font-size: 1.3rem; font-weight: 600; }

.charts { display: flex; flex-wrap: wrap; gap: 0.8rem 3rem; margin: 1rem 0; }
.charts section { flex: 1 1 24rem; min-width: 0; max-width: 48rem; }
.charts h2 { color: var(--title); margin-bottom: 0.3rem; }
.charts table { width: 100%; border-collapse: collapse; table-layout: fixed; }
.charts th { width: 40%; padding: 0.1rem 0.6rem 0.1rem 0; text-align: right; font-weight: normal;
  overflow-wrap: anywhere; }
.charts td { padding: 0.1rem 0; white-space: nowrap; }
.charts i { display: inline-block; height: 0.9em; margin-right: 0.5em; vertical-align: -0.05em;
  background: var(--bar); border-radius: 0 2px 2px 0; print-color-adjust: exact;
  -webkit-print-color-adjust: exact; }

.bar { position: sticky; top: 0; z-index: 1; margin: 0 -1.5rem; padding: 0.5rem 1.5rem 0;
  background: var(--paper); }
.tools { display: flex; flex-wrap: wrap; align-items: center; gap: 0.5rem; margin: 0 0 0.4rem; }
.tools label { display: flex; align-items: center; gap: 0.5rem; }
.tools input, .tools button { font: inherit; padding: 0.2rem 0.6rem; }
.tools input { width: 18rem; max-width: 60vw; }
.tools output { color: var(--faint); }

.rows { width: 100%; border-collapse: collapse; table-layout: fixed; }
.rows th, .rows td { padding: 0.15rem 0.3rem; text-align: left; vertical-align: top;
  overflow-wrap: anywhere; }
.rows td { border-bottom: 1px solid var(--rule); white-space: pre-wrap; }
.rows tbody tr:hover { background: var(--hover); }
.bar .rows { border-bottom: 2px solid var(--title); }
.bar .rows th { vertical-align: bottom; color: var(--title); white-space: pre-line; }
.rows th span { writing-mode: vertical-rl; transform: rotate(180deg); max-height: 16rem; }
.block .rows th { height: 0; padding-top: 0; padding-bottom: 0; font-size: 0; line-height: 0; }
.block .rows th span { max-height: 0; overflow: hidden; }
.rows td.again { font-size: 0; }
.filtered .rows td.again { font-size: inherit; }
.block { content-visibility: auto; contain-intrinsic-size: 0 calc(var(--n) * 1.65rem); }

details { margin-top: 0.25rem; }
summary { display: flex; gap: 0.6rem; align-items: baseline; padding: 0.25rem 0.6rem; cursor: pointer;
  background: var(--light); list-style: none; overflow-wrap: anywhere; }
summary::-webkit-details-marker { display: none; }
summary::before { content: "\25B8"; flex: none; width: 0.8em; color: var(--faint); }
details[open] > summary::before { content: "\25BE"; }
summary > :first-of-type { flex: 1 1 auto; min-width: 0; white-space: pre-line; }
summary > span { flex: 0 1 auto; color: var(--faint); text-align: right; }
.outer > summary { background: var(--band); color: var(--title); }
details details details > summary { background: none; padding-left: 1.4rem; }
details details details > .note { padding-left: 2.8rem; }
.outer { margin-top: 0.7rem; }
.note { padding: 0 0.6rem 0 2rem; color: var(--faint); font-size: 0.8rem; }

@media print {
  :root {
    color-scheme: light;
    --paper: #fff; --text: #000; --faint: #444; --title: #123e6b; --band: #dfe8f2; --light: #eff4f9;
    --rule: #bbb; --bar: #4a86c5;
  }
  body { margin: 0; }
  .rows th, .rows td, .block .rows th { padding: 0.1em 0.25em; }
  .bar { display: none; }
  .block { content-visibility: visible; }
  .block .rows th { height: auto; font-size: inherit; line-height: inherit;
    color: var(--title); vertical-align: bottom; }
  .block .rows th span { max-height: 16rem; }
  summary { break-after: avoid; print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  summary::before { display: none; }
  tr, .charts section { break-inside: avoid; }
}
)css";

// The rows' texts are gathered when the filter is first gone to. Blocks and groups without a match are
// hidden whole, and their rows are left as they are until they are wanted again.
inline constexpr std::string_view kPageScript = R"js(
"use strict";
(() => {
  const find = (id) => document.getElementById(id);
  const main = find("report");
  const box = find("filter");
  if (box === null) return;
  const count = find("count");
  const groups = [...main.getElementsByTagName("details")];
  let index = null;

  function gather() {
    const rows = [], texts = [], shown = [], blocks = [], folds = [];
    const walk = (parent, context) => {
      for (const node of parent.children) {
        if (node.tagName === "DETAILS") {
          const own = [...node.children].filter((part) => part.matches("summary, .note"));
          const fold = { node, begin: rows.length, hidden: false, wasOpen: true };
          folds.push(fold);
          walk(node, context + own.map((part) => part.textContent + "\n").join(""));
          fold.end = rows.length;
        } else if (node.className === "block") {
          const block = { node, begin: rows.length };
          for (const row of node.firstElementChild.tBodies[0].rows) {
            rows.push(row);
            texts.push((context + [...row.cells].map((cell) => cell.textContent).join("\n")).toLowerCase());
            shown.push(true);
          }
          block.end = rows.length;
          block.count = block.end - block.begin;
          blocks.push(block);
        }
      }
    };
    walk(main, "");
    return { rows, texts, shown, blocks, folds, filtered: false };
  }

  function showRows(matches, before) {
    for (const block of index.blocks) {
      const matching = before[block.end] - before[block.begin];
      if (matching !== block.count) {
        block.node.hidden = matching === 0;
        block.node.style.setProperty("--n", matching);
        block.count = matching;
      }
      if (matching === 0) continue;
      for (let i = block.begin; i < block.end; ++i) {
        if (index.shown[i] === (matches[i] === 1)) continue;
        index.shown[i] = matches[i] === 1;
        index.rows[i].hidden = !index.shown[i];
      }
    }
  }

  function showGroups(before, filtered) {
    for (const fold of index.folds) {
      const hidden = filtered && before[fold.end] === before[fold.begin];
      if (hidden !== fold.hidden) fold.node.hidden = fold.hidden = hidden;
      if (filtered && !index.filtered) fold.wasOpen = fold.node.open;
      const open = filtered || fold.wasOpen;
      if (filtered !== index.filtered && fold.node.open !== open) fold.node.open = open;
    }
  }

  function filter() {
    const words = box.value.toLowerCase().split(/\s+/).filter((word) => word !== "");
    const filtered = words.length > 0;
    if (!filtered && index === null) return;
    index ??= gather();
    const total = index.rows.length;
    const matches = new Uint8Array(total);
    const before = new Uint32Array(total + 1);
    for (let i = 0; i < total; ++i) {
      matches[i] = words.every((word) => index.texts[i].includes(word)) ? 1 : 0;
      before[i + 1] = before[i] + matches[i];
    }
    main.classList.toggle("filtered", filtered);
    showRows(matches, before);
    showGroups(before, filtered);
    index.filtered = filtered;
    count.textContent = filtered
      ? before[total].toLocaleString("en") + " of " + total.toLocaleString("en") + " rows" : "";
  }

  box.addEventListener("focus", () => { index ??= gather(); }, { once: true });
  const pause = 120;
  let timer = 0;
  box.addEventListener("input", () => {
    clearTimeout(timer);
    timer = setTimeout(filter, pause);
  });
  const setAll = (open) => {
    for (const group of groups) group.open = open;
    if (index !== null) for (const fold of index.folds) fold.wasOpen = open;
  };
  find("expand")?.addEventListener("click", () => setAll(true));
  find("collapse")?.addEventListener("click", () => setAll(false));
  find("tools").hidden = false;
  if (box.value !== "") filter();
})();
)js";

// What the browser may run: this script, by its SHA-256. A change of the script changes it; the test says
// what it has become.
inline constexpr std::string_view kPageScriptHash = "sha256-DmghfraqyaoC+L2J1rdgEPxvRLxRCY3o3Uz3l2nNL8w=";

}  // namespace zorvel
