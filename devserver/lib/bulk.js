// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { badRequest } from './errors.js';
import { isObject, parameter } from './exchange.js';
import { presented } from './documents.js';
import { storableDocument } from './writing.js';

export async function allDocuments({ exchange, database }) {
  const { query } = exchange;
  const options = {
    ...await rangeOptions(exchange),
    include_docs: parameter.boolean(query, 'include_docs', false),
    conflicts: parameter.boolean(query, 'conflicts', false),
    attachments: parameter.boolean(query, 'attachments', false),
  };
  const { total_rows, offset, rows } = await database.pouch.allDocs(options);
  exchange.sendJson(200, {
    total_rows,
    offset: options.keys ? null : offset ?? 0,
    rows: rows.map((row) => shapedRow(row, options.include_docs)),
  });
}

/** Rows of missing and deleted documents keep their form, others get their document. */
function shapedRow(row, includeDocs) {
  if (row.error)
    return { key: row.key, error: row.error };
  const { id, key, value, doc } = row;
  return includeDocs ? { id, key, value, doc: doc ? presented(doc) : null } : { id, key, value };
}

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

export function withoutUndefined(object) {
  return Object.fromEntries(Object.entries(object).filter(([, value]) => value !== undefined));
}

export async function bulkDocuments({ exchange, database }) {
  const body = await exchange.readPostedJson();
  if (!isObject(body))
    throw badRequest('Request body must be a JSON object');
  if (body.docs === undefined)
    throw badRequest('POST body must include `docs` parameter.');
  if (!Array.isArray(body.docs))
    throw badRequest('`docs` parameter must be an array.');
  const newEdits = body.new_edits !== false;
  const prepared = [];
  for (const sent of body.docs)
    prepared.push(await preparedOrConflict(database, sent, newEdits));
  const docs = prepared.filter((entry) => !entry.failed);
  const results = await database.write(docs, { newEdits });
  if (!newEdits)
    return exchange.sendJson(201, results.map(resultRow));
  let next = 0;
  exchange.sendJson(201,
    prepared.map((entry) => resultRow(entry.failed ?? results[next++])));
}

/** A conflict concerns one document only; every other fault refuses the whole request. */
async function preparedOrConflict(database, sent, newEdits) {
  try {
    return await storableDocument(database, sent, { newEdits });
  } catch (error) {
    if (error.status !== 409)
      throw error;
    return { failed: { id: sent._id, error: true, status: 409 } };
  }
}

function resultRow({ error, status, id, rev, name, message }) {
  if (!error)
    return { ok: true, id, rev };
  return status === 409
    ? { id, error: 'conflict', reason: 'Document update conflict.' }
    : { id, error: name, reason: message };
}
