import axe from 'axe-core';

/** What axe, with its default rules, finds in a page and in all its frames: one text for each violation. */
export async function findViolations(page) {
  const frame = page.mainFrame();
  const partials = await checkFrame(frame, {});
  return frame.evaluate(async (parts) => {
    const results = await window.axe.finishRun(parts.map((part) => JSON.parse(part)));
    return results.violations.flatMap(({ id, help, nodes }) => nodes.map((node) => (
      `${id} (${help}): ${node.target.join(' > ')}: ${node.html.slice(0, 120)}`)));
  }, partials);
}

// Partial results travel as text: as objects they are too deep for what drives Firefox.
async function checkFrame(frame, context) {
  await frame.evaluate(axe.source);
  const [frameContexts, partial] = await frame.evaluate(async (given) => [
    window.axe.utils.getFrameContexts(given),
    JSON.stringify(await window.axe.runPartial(given)),
  ], context);
  const partials = [partial];
  for (const { frameSelector, frameContext } of frameContexts) {
    const element = await frame.evaluateHandle((selector) => window.axe.utils.shadowSelect(selector), frameSelector);
    partials.push(...await checkFrame(await element.contentFrame(), frameContext));
  }
  return partials;
}
