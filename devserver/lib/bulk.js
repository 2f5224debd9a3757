// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { badRequest } from './errors.js';
import { isObject, parameter } from './exchange.js';
import { documentRow, rangeOptions } from './range.js';
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
    rows: rows.map((row) => listedRow(row, options.include_docs)),
  });
}

/** Rows of missing documents keep their form. */
function listedRow(row, includeDocs) {
  return row.error ? { key: row.key, error: row.error } : documentRow(row, includeDocs);
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
