// Brings the marked entries of the menu into sight where its rows are pushed sideways.
for (const row of document.querySelectorAll(".menu ul")) {
  const marked = row.querySelector("[aria-current]");
  if (marked) row.scrollLeft = marked.offsetLeft - (row.clientWidth - marked.offsetWidth) / 2;
}
