// Takes the links off a pager that lead nowhere: "previous" on the first page, "next" on the last.
// The pager works without this script too; the server then shows the nearest page there is.
for (const pager of document.querySelectorAll("[data-pages]")) {
  const page = Number(pager.dataset.page);
  const pages = Number(pager.dataset.pages);
  const end = (rel) => {
    const link = pager.querySelector(`[rel="${rel}"]`);
    link?.removeAttribute("href");
    link?.setAttribute("aria-disabled", "true");
  };
  if (page <= 1) end("prev");
  if (page >= pages) end("next");
  if (pages <= 1) pager.hidden = true;
}
