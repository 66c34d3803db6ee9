// The tabs of the shop: a click or the arrow keys show the panel of a tab and hide the others.
// The page comes with the first panel shown; without this script its <noscript> shows them all.
for (const shop of document.querySelectorAll(".shop-category:has(> .tabs)")) {
  const list = shop.querySelector(".tabs");
  const tabs = [...list.querySelectorAll("button")];
  const panels = [...shop.querySelectorAll(":scope > .panel")];
  if (tabs.length !== panels.length) continue;

  const choose = (chosen) => {
    tabs.forEach((tab, i) => {
      tab.className = i === chosen ? "h1" : "h2";
      tab.setAttribute("aria-selected", String(i === chosen));
      tab.tabIndex = i === chosen ? 0 : -1;
      panels[i].style.display = i === chosen ? "" : "none";
    });
  };

  list.setAttribute("role", "tablist");
  tabs.forEach((tab, i) => {
    tab.setAttribute("role", "tab");
    tab.setAttribute("aria-controls", `${tab.id}-panel`);
    panels[i].id = `${tab.id}-panel`;
    panels[i].setAttribute("role", "tabpanel");
    panels[i].setAttribute("aria-labelledby", tab.id);
    tab.addEventListener("click", () => choose(i));
  });
  list.addEventListener("keydown", (event) => {
    const at = tabs.indexOf(document.activeElement);
    const to = {
      ArrowRight: (at + 1) % tabs.length,
      ArrowLeft: (at + tabs.length - 1) % tabs.length,
      Home: 0,
      End: tabs.length - 1,
    }[event.key];
    if (at < 0 || to === undefined) return;
    event.preventDefault();
    choose(to);
    tabs[to].focus();
  });
  choose(0);
}
