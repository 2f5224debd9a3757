// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What a large database has many of. More products than anything else.
const WEIGHTS = { product: 6, device: 1, location: 1, tag: 1, 'tag:product': 1 };
const DAY = 24 * 60 * 60 * 1000;

/** The samples and numbered copies of them, `count` in all. The same for the same samples. */
export function withCopies(samples, count) {
  const models = samples.flatMap((doc) => Array(WEIGHTS[doc.type] ?? 0).fill(doc));
  const numbers = new Map();
  const copies = Array.from({ length: Math.max(0, count - samples.length) }, (_, index) => {
    const model = models[index % models.length];
    const number = (numbers.get(model) ?? 1) + 1;
    numbers.set(model, number);
    return copyOf(model, number);
  });
  return [...samples, ...copies];
}

/** Its references lead where those of the model lead. */
function copyOf(model, number) {
  const copy = { ...model, _id: `${model._id}-${number}`, created: later(model.created, number) };
  copy.edited = later(model.edited, number);
  if (typeof model.label === 'string')
    copy.label = `${model.label} ${number}`;
  if (typeof model.name === 'string')
    copy.name = `${model.name} ${number}`;
  else if (model.name)
    copy.name = { ...model.name, items: mapValues(model.name.items, (text) => `${text} ${number}`) };
  if (model.prices)
    copy.prices = mapValues(model.prices, (price) => Math.round(price * (90 + number % 21)) / 100);
  return copy;
}

function later(time, days) {
  return new Date(Date.parse(time) + days * DAY).toISOString().replace('.000Z', 'Z');
}

function mapValues(object, change) {
  return Object.fromEntries(Object.entries(object).map(([key, value]) => [key, change(value)]));
}
