// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { notFound, queryError } from './errors.js';
import { parameter } from './exchange.js';
import { documentRow, rangeOptions, withoutUndefined } from './range.js';

export async function queryView({ exchange, database, design, view }) {
  const { query } = exchange;
  const options = withoutUndefined({
    ...await rangeOptions(exchange),
    include_docs: parameter.boolean(query, 'include_docs', false),
    reduce: parameter.boolean(query, 'reduce'),
    group: parameter.boolean(query, 'group', false),
    group_level: parameter.count(query, 'group_level'),
  });
  const definition = await viewDefinition(database, design, view);
  checkReduction(definition, options);
  const { total_rows, offset, rows } = await database.pouch.query(`${design}/${view}`, options);
  exchange.sendJson(200, {
    total_rows,
    offset,
    // Only rows of a map have an id.
    rows: rows.map((row) => (row.id === undefined
      ? { key: row.key, value: row.value }
      : documentRow(row, options.include_docs))),
  });
}

async function viewDefinition(database, design, view) {
  const { views = {} } = await database.pouch.get(`_design/${design}`);
  if (!Object.hasOwn(views, view))
    throw notFound('missing_named_view');
  return views[view];
}

function checkReduction({ reduce }, options) {
  if (reduce)
    return;
  if (options.reduce)
    throw queryError('Reduce is invalid for map-only views.');
  if (options.group || options.group_level !== undefined)
    throw queryError('Invalid use of grouping on a map view.');
}
