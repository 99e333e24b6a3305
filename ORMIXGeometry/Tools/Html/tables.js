"use strict";
// Every column of every table sorts its rows: by number where the column is one of numbers, else by text; empty cells last.
for (const table of document.querySelectorAll("table")) {
  const headings = [...table.tHead.rows[0].cells];
  const body = table.tBodies[0];
  const collator = new Intl.Collator(undefined, { numeric: true });

  const sortBy = (heading, column) => {
    const isNumeric = heading.classList.contains("number");
    const isDown = heading.getAttribute("aria-sort") === "ascending";
    const sign = isDown ? -1 : 1;
    const keyed = [...body.rows].map((row) => {
      const text = row.cells[column]?.textContent ?? "";
      return { row, isEmpty: text === "", key: isNumeric ? Number(text) : text };
    });
    keyed.sort((a, b) => {
      if (a.isEmpty || b.isEmpty) return a.isEmpty - b.isEmpty;
      return sign * (isNumeric ? a.key - b.key : collator.compare(a.key, b.key));
    });
    headings.forEach((each) => each.removeAttribute("aria-sort"));
    heading.setAttribute("aria-sort", isDown ? "descending" : "ascending");
    body.append(...keyed.map((each) => each.row));
  };

  headings.forEach((heading, column) => {
    const button = document.createElement("button");
    button.append(...heading.childNodes);
    button.addEventListener("click", () => sortBy(heading, column));
    heading.append(button);
  });
}
