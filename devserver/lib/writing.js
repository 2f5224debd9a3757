// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { Buffer } from 'node:buffer';
import { randomUUID } from 'node:crypto';

import { badRequest, conflict, HttpError } from './errors.js';
import { checkRevision, isObject } from './exchange.js';

const MAX_DOCUMENT_BYTES = 8_000_000;

/** Reserved fields that a writer may send back and that have no effect. */
const IGNORED_FIELDS = new Set(
  ['_revs_info', '_conflicts', '_deleted_conflicts', '_local_seq']);
const ACCEPTED_FIELDS = new Set(['_id', '_rev', '_deleted', '_attachments', '_revisions']);

/**
 * A document that may be stored, made from what a client sent: checked as CouchDB checks, without
 * ignored fields, with an id, and with attachments as bytes or complete stubs.
 */
export async function storableDocument(database, sent, { newEdits = true } = {}) {
  const doc = checkedDocument(sent, newEdits);
  if (doc._attachments !== undefined && !doc._deleted)
    doc._attachments = await storableAttachments(database, doc);
  return doc;
}

export function checkedObject(sent) {
  if (!isObject(sent))
    throw badRequest('Document must be a JSON object');
  return sent;
}

function checkedDocument(sent, newEdits) {
  const doc = {};
  for (const [field, value] of Object.entries(checkedObject(sent))) {
    if (value === undefined || IGNORED_FIELDS.has(field))
      continue;
    if (newEdits && field === '_revisions')
      continue;
    if (field.startsWith('_') && !ACCEPTED_FIELDS.has(field))
      throw validationError(`Bad special document member: ${field}`);
    doc[field] = value;
  }
  doc._id = checkedId(doc._id ?? randomUUID().replaceAll('-', ''));
  if (doc._rev !== undefined)
    checkRevision(doc._rev);
  if (doc._revisions !== undefined)
    checkRevisions(doc._revisions);
  if (doc._deleted !== undefined && typeof doc._deleted !== 'boolean')
    throw validationError('Bad special document member: _deleted');
  if (doc._attachments !== undefined && !isObject(doc._attachments))
    throw badRequest('Attachments must be a JSON object');
  const { _attachments, ...body } = doc;
  if (Buffer.byteLength(JSON.stringify(body)) > MAX_DOCUMENT_BYTES)
    throw new HttpError(413, 'document_too_large', doc._id);
  return doc;
}

function validationError(reason) {
  return new HttpError(400, 'doc_validation', reason);
}

function checkRevisions(revisions) {
  if (!Number.isInteger(revisions?.start))
    throw validationError("_revisions.start isn't an integer.");
  const { ids } = revisions;
  if (!Array.isArray(ids) || ids.length === 0 || ids.some((id) => typeof id !== 'string'))
    throw validationError("_revisions.ids isn't a array.");
}

function checkedId(id) {
  const illegal = (reason) => new HttpError(400, 'illegal_docid', reason);
  if (typeof id !== 'string')
    throw illegal('Document id must be a string');
  if (id === '')
    throw illegal('Document id must not be empty');
  if (id.startsWith('_') && !/^_(design|local)\/./.test(id))
    throw illegal('Only reserved document ids may start with underscore.');
  return id;
}

export function checkAttachmentName(name) {
  if (name.startsWith('_'))
    throw badRequest(`Attachment name '${name}' starts with prohibited character '_'`);
}

async function storableAttachments(database, doc) {
  const entries = Object.entries(doc._attachments);
  const stored = entries.some(([, entry]) => entry?.stub === true)
    ? await parentAttachments(database, doc)
    : {};
  const result = {};
  for (const [name, entry] of entries) {
    checkAttachmentName(name);
    result[name] = entry?.stub === true
      ? storedStub(doc._id, name, stored)
      : inlineAttachment(name, entry);
  }
  return result;
}

/** What stubs may refer to: the attachments of the revision that the writer builds upon. */
async function parentAttachments(database, doc) {
  const current = await database.find(doc._id);
  if (!current)
    return {};
  if (current._rev === doc._rev)
    return current._attachments ?? {};
  const parent = doc._rev && await database.find(doc._id, { rev: doc._rev });
  if (!parent)
    throw conflict();
  return parent._attachments ?? {};
}

function storedStub(id, name, stored) {
  if (!Object.hasOwn(stored, name)) {
    throw new HttpError(412, 'missing_stub', `Invalid attachment stub in ${id} for ${name}`);
  }
  return stored[name];
}

function inlineAttachment(name, entry) {
  const text = isObject(entry) ? entry.data : undefined;
  const data = typeof text === 'string' ? Buffer.from(text, 'base64') : null;
  if (!data || data.toString('base64') !== text)
    throw badRequest(`Invalid attachment data for ${name}`);
  return { content_type: String(entry.content_type ?? 'application/octet-stream'), data };
}
