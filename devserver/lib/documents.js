// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { badRequest, conflict, notFound } from './errors.js';
import { parameter } from './exchange.js';
import { checkAttachmentName, checkedObject, storableDocument } from './writing.js';

/** From this size on a stale write is refused before its body is read. */
const EARLY_REFUSAL_BYTES = 64 * 1024;

export async function getDocument({ exchange, database, id }) {
  const { query } = exchange;
  const options = {
    revs: parameter.boolean(query, 'revs', false),
    revs_info: parameter.boolean(query, 'revs_info', false),
    conflicts: parameter.boolean(query, 'conflicts', false),
    attachments: parameter.boolean(query, 'attachments', false),
  };
  if (query.has('rev'))
    options.rev = exchange.expectedRevision();
  const doc = await database.pouch.get(id, options);
  const etag = `"${doc._rev}"`;
  if (!exchange.answeredAsUnmodified(etag))
    exchange.sendJson(200, presented(doc), { ETag: etag });
}

export async function putDocument({ exchange, database, id }) {
  const expected = exchange.expectedRevision();
  if (expected && exchange.announcedLength > EARLY_REFUSAL_BYTES)
    await refuseStale(database, id, expected, { close: true });
  const sent = checkedObject(await exchange.readJson());
  if (expected && sent._rev !== undefined && sent._rev !== expected)
    throw badRequest('Document rev from request body and query string have different values');
  await storeAndAnswer(exchange, database, { ...sent, _rev: expected ?? sent._rev, _id: id });
}

export async function postDocument({ exchange, database }) {
  await storeAndAnswer(exchange, database, checkedObject(await exchange.readPostedJson()));
}

export async function deleteDocument({ exchange, database, id }) {
  const expected = exchange.expectedRevision();
  await database.pouch.get(id);
  await storeAndAnswer(exchange, database, { _id: id, _rev: expected, _deleted: true });
}

/** Documents as CouchDB shows them: id and revision first. */
export function presented(doc) {
  const { _id, _rev, ...rest } = doc;
  return { _id, _rev, ...rest };
}

export async function getAttachment({ exchange, database, id, attachment }) {
  const options = exchange.query.has('rev') ? { rev: exchange.expectedRevision() } : {};
  const doc = await database.pouch.get(id, options);
  const stub = Object.hasOwn(doc._attachments ?? {}, attachment) && doc._attachments[attachment];
  if (!stub)
    throw notFound('Document is missing attachment');
  const etag = `"${stub.digest.replace(/^md5-/, '')}"`;
  if (exchange.answeredAsUnmodified(etag))
    return;
  const data = await database.pouch.getAttachment(id, attachment, { rev: doc._rev });
  exchange.response.writeHead(200, {
    'Accept-Ranges': 'none',
    'Cache-Control': 'must-revalidate',
    'Content-Length': data.length,
    'Content-Type': stub.content_type,
    ETag: etag,
  });
  exchange.response.end(exchange.isHead ? undefined : data);
}

export async function putAttachment({ exchange, database, id, attachment }) {
  checkAttachmentName(attachment);
  const expected = exchange.expectedRevision();
  const close = exchange.announcedLength > EARLY_REFUSAL_BYTES;
  const current = await refuseStale(database, id, expected, { close });
  const entry = {
    content_type: exchange.header('content-type') ?? 'application/octet-stream',
    data: await exchange.readBody(),
  };
  await changeAttachments(exchange, database, id, expected, current, { [attachment]: entry });
}

export async function deleteAttachment({ exchange, database, id, attachment }) {
  const expected = exchange.expectedRevision();
  const current = await refuseStale(database, id, expected);
  if (!Object.hasOwn(current?._attachments ?? {}, attachment))
    throw notFound('Document is missing attachment');
  await changeAttachments(exchange, database, id, expected, current, { [attachment]: undefined });
}

async function changeAttachments(exchange, database, id, expected, current, changes) {
  const attachments = { ...current?._attachments, ...changes };
  for (const name of Object.keys(attachments)) {
    if (attachments[name] === undefined)
      delete attachments[name];
  }
  const doc = { ...current, _id: id, _attachments: attachments };
  if (expected)
    doc._rev = expected;
  await write(exchange, database, doc, exchange.method === 'DELETE' ? 200 : 201);
}

async function storeAndAnswer(exchange, database, sent) {
  const doc = await storableDocument(database, sent);
  await write(exchange, database, doc, doc._deleted ? 200 : 201);
}

async function write(exchange, database, doc, status) {
  const [result] = await database.write([doc]);
  if (result.error)
    throw result;
  const { id, rev } = result;
  const headers = { ETag: `"${rev}"` };
  if (status === 201)
    headers.Location = exchange.address(database.name, ...id.split(/(?<=^_design|^_local)\//));
  exchange.sendJson(status, { ok: true, id, rev }, headers);
}

/**
 * Throws a conflict if a writer that expects this revision (or, without one, no document) cannot
 * succeed. Returns the document that it builds upon; null if there is none or it is deleted.
 */
async function refuseStale(database, id, expected, options) {
  const current = await database.find(id, { conflicts: true });
  if (!current) {
    if (expected && !await database.find(id, { rev: expected }))
      throw conflict(options);
    return null;
  }
  const { _conflicts = [], ...doc } = current;
  if (doc._rev === expected)
    return doc;
  if (!expected || !_conflicts.includes(expected))
    throw conflict(options);
  return database.find(id, { rev: expected });
}
