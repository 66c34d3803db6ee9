// Names for what some regions leave without one: their markup is fixed, and a screen reader would
// read a picture's address or an unnamed box. Pictures of links take their own title or the link's,
// signs none, boxes the words beside them.
{
  const english = document.documentElement.lang === "en";
  const name = (selector, words) => {
    for (const node of document.querySelectorAll(selector)) {
      if (!node.labels?.length) node.setAttribute("aria-label", words(node));
    }
  };
  for (const image of document.querySelectorAll("img:not([alt])")) {
    const link = image.closest("a");
    image.alt = link && !link.textContent.trim() ? image.title || link.title : "";
  }
  name(".domain-search [type=checkbox]", (box) => box.parentElement.textContent.trim());
  name("select[name=BuyYear]", () => (english ? "How long" : "时长"));
  name("select[name=BuyType]", () => (english ? "Years or months" : "单位"));
  name(".pages select", () => (english ? "Page" : "页码"));
}
