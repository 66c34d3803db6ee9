// Lets a drop-down of provinces fill the one of its cities: the province's data-cities names the
// other, data-from the page that writes the options of ?province=NN. The last choice wins, whatever
// order the answers come in.
for (const province of document.querySelectorAll("select[data-cities]")) {
  const city = document.getElementById(province.dataset.cities);
  let asked = 0;
  province.addEventListener("change", async () => {
    const mine = ++asked;
    city.disabled = true;
    const code = encodeURIComponent(province.value.slice(0, 2));
    try {
      const answer = await fetch(`${province.dataset.from}?province=${code}`);
      const options = answer.ok ? await answer.text() : "";
      if (mine === asked) city.innerHTML = options;
    } finally {
      if (mine === asked) city.disabled = false;
    }
  });
}
