// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { badRequest } from './errors.js';
import { isObject, parameter } from './exchange.js';
import { presented } from './documents.js';

/** Key range, order and page: what the list of all documents and views have in common. */
export async function rangeOptions(exchange) {
  const { query } = exchange;
  const body = exchange.method === 'POST' ? await exchange.readPostedJson() : {};
  if (!isObject(body))
    throw badRequest('Request body must be a JSON object');
  const keys = body.keys ?? parameter.json(query, 'keys');
  if (keys !== undefined && !Array.isArray(keys))
    throw badRequest('`keys` member must be an array.');
  const options = {
    keys,
    key: parameter.json(query, 'key'),
    startkey: parameter.json(query, 'startkey', 'start_key'),
    endkey: parameter.json(query, 'endkey', 'end_key'),
    inclusive_end: parameter.boolean(query, 'inclusive_end', true),
    descending: parameter.boolean(query, 'descending', false),
    limit: parameter.count(query, 'limit'),
    skip: parameter.count(query, 'skip') ?? 0,
  };
  return withoutUndefined(options);
}

/** A row of a list; with documents it has null where the document is gone. */
export function documentRow({ id, key, value, doc }, includeDocs) {
  return includeDocs ? { id, key, value, doc: doc ? presented(doc) : null } : { id, key, value };
}

export function withoutUndefined(object) {
  return Object.fromEntries(Object.entries(object).filter(([, value]) => value !== undefined));
}
