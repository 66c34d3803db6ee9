// The total of an article. showmoney() comes with the page and writes it into the element wmoney,
// by the names of the form and of that element, which browsers make global; here it is called at
// once and with every change, and what it wrote is rounded to hundredths.
{
  const form = document.forms.myfrm;
  const written = window.showmoney;
  window.showmoney = () => {
    form.BuyNo.value = Math.min(Math.max(Math.trunc(form.BuyNo.valueAsNumber) || 1, 1), 999);
    written();
    wmoney.value = String(Math.round(Number(wmoney.textContent) * 100) / 100);
  };
  form.BuyNo.addEventListener("change", () => window.showmoney());
  window.showmoney();
}
