// Moves the link strips on. A strip ends with new Marquee(id, 0, height, width, height - 1, pause, 0, 0);
// this shows `height` pixels of its list and goes on by as much after every `pause` milliseconds,
// from the end back to the top. It waits while the strip is pointed at, has the focus or is out of
// sight, and stays still, scrollable by hand, for visitors who asked for less motion.
function Marquee(id, direction, height, width, step, pause) {
  const strip = document.getElementById(id);
  const calm = matchMedia("(prefers-reduced-motion: reduce)");
  // A pause of next to nothing would make a strip that no one can read.
  const wait = Math.max(Number(pause) || 0, 1000);
  let held = false;

  strip.classList.add("marquee");
  strip.style.height = `${height}px`;
  strip.style.overflowX = "hidden";

  const moves = () => !calm.matches && strip.scrollHeight > strip.clientHeight;
  const settle = () => {
    strip.style.overflowY = calm.matches ? "auto" : "hidden";
  };
  const move = () => {
    if (held || document.hidden || !moves()) return;
    const ended = strip.scrollTop + strip.clientHeight >= strip.scrollHeight - 1;
    strip.scrollTo({ top: ended ? 0 : strip.scrollTop + strip.clientHeight, behavior: "smooth" });
  };
  const hold = () => {
    held = true;
  };
  const release = () => {
    held = strip.matches(":hover") || strip.contains(document.activeElement);
  };

  strip.addEventListener("mouseenter", hold);
  strip.addEventListener("mouseleave", release);
  strip.addEventListener("focusin", hold);
  strip.addEventListener("focusout", () => setTimeout(release));
  calm.addEventListener("change", settle);
  settle();
  setInterval(move, wait);
}
