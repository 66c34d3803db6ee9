// Stands before the text of ShowFlash_Ad's script and makes it a show for the browsers of today.
//
// That script keeps pictures, links and captions in image objects, so that a browser would fetch
// every link as if it were a picture: until the page is read, an image is a plain holder of its
// texts here. What old browsers wiped fades. Small pictures get names, the show a button that stops
// it, and it stands still from the start for visitors who asked for less motion.
(() => {
  const BrowserImage = window.Image;
  window.Image = function () {};

  document.addEventListener("DOMContentLoaded", () => {
    window.Image = BrowserImage;
    const show = document.querySelector(".picshow_main");
    const big = document.getElementById("pic");
    if (!show || !big || !window.counts) return;

    const calm = matchMedia("(prefers-reduced-motion: reduce)");
    const [stop, go] = (show.parentElement.dataset.words || "Stop|Go on").split("|");
    let stopped = calm.matches;

    for (let n = 1; n <= window.counts; n++) {
      new BrowserImage().src = window[`img${n}`].src;
      const small = document.getElementById(`xxjdjj${n}`);
      small.setAttribute("aria-label", window[`alt${n}`].alt);
      small.querySelector("img").alt = "";
    }

    const button = document.createElement("button");
    button.type = "button";
    button.className = "picshow_stop";
    const halt = () => clearTimeout(window.tt);
    const tell = () => {
      button.textContent = stopped ? "▶" : "❚❚";
      button.setAttribute("aria-label", stopped ? go : stop);
    };
    button.addEventListener("click", () => {
      stopped = !stopped;
      if (stopped) halt();
      else window.change_img();
      tell();
    });
    show.append(button);
    tell();
    if (stopped) halt();

    // A jump sets the clock again, which a stopped show must not follow.
    const jump = window.changeimg;
    window.changeimg = (n) => {
      jump(n);
      if (stopped) halt();
    };
    new MutationObserver(() => {
      if (!calm.matches) big.animate([{ opacity: 0.2 }, { opacity: 1 }], 600);
    }).observe(big, { attributes: true, attributeFilter: ["src"] });
  });
})();
