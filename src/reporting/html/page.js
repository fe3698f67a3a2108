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
