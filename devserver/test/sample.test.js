// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';

import { run, startServer, test } from './support.js';

const folder = new URL('../../database/sample/', import.meta.url);
const docs = readdirSync(folder)
  .filter((name) => name.endsWith('.json'))
  .flatMap((name) => JSON.parse(readFileSync(new URL(name, folder), 'utf8')));
const ids = docs.map((doc) => doc._id);
const LINKS = ['location', 'parentGroup', 'productGroup', 'tagGroup'];
const REFERENCE = /^\$ref\(0,([\w.-]+)\)$/;

/** Ids of all documents that the properties and the structs of a document name, sorted, once each. */
function namedDocuments(doc) {
  const links = LINKS.flatMap((field) => doc[field] ?? []);
  const images = Object.values(doc.images ?? {});
  return [...new Set([...links, ...images, ...structReferences(doc)])].sort();
}

function structReferences(doc) {
  return Object.entries(doc[':data'] ?? {})
    .filter(([key]) => key.startsWith('s:'))
    .flatMap(([, struct]) => Object.values(struct))
    .flatMap((value) => REFERENCE.exec(value)?.[1] ?? []);
}

test('ids are unique and plain', () => {
  assert.equal(new Set(ids).size, ids.length);
  for (const id of ids)
    assert.match(id, /^sample\.[\w.-]+$/);
});

test('every document has the stored form', () => {
  for (const doc of docs) {
    assert.match(doc.type, /^[a-z][a-z0-9]+(:[a-z][a-z0-9]+)*$/, doc._id);
    assert.equal(doc.deleted, false, doc._id);
    assert.equal(doc.creationVersion, '1.0.0', doc._id);
    assert.notEqual(doc.label, '', doc._id);
    for (const date of [doc.created, doc.edited])
      assert.equal(new Date(date).toISOString().replace('.000', ''), date, doc._id);
    assert.ok(doc.created <= doc.edited, doc._id);
  }
});

test('references name existing documents and match the data', () => {
  for (const doc of docs) {
    assert.deepEqual(doc.references, namedDocuments(doc), doc._id);
    for (const id of doc.references)
      assert.ok(ids.includes(id), `${doc._id} refers to ${id}`);
  }
});

test('each item of a list has its struct', () => {
  for (const doc of docs) {
    const data = doc[':data'] ?? {};
    for (const [key, items] of Object.entries(data).filter(([name]) => name.startsWith('l:'))) {
      for (const item of items)
        assert.equal(typeof data[`s:${item}`], 'object', `${doc._id} ${key} ${item}`);
    }
  }
});

test('the catalogue names all other documents', () => {
  const { [':data']: data } = docs.find((doc) => doc._id === 'sample.catalogue');
  const others = ids.filter((id) => id !== 'sample.catalogue').sort();
  assert.deepEqual(Object.keys(data['s:documents']).sort(), others);
});

test('the views list each type prefix, newest first, and each reference', async (t) => {
  const server = await startServer(t);
  await run('fill.js', server.address);
  await server.client.expect('PUT', '/gone', { type: 'tag', deleted: true,
    created: '2024-01-01T00:00:00Z', references: ['sample.tag.sale'] });
  const view = (query) => server.client.expect('GET', `/_design/tessaro/_view/${query}`);
  const prefixes = ['tag', 'tag:product', 'group', 'group:tag', 'product', 'data', 'data:opening',
    'data:opening:hours', 'dat'];
  for (const prefix of prefixes) {
    const expected = docs
      .filter(({ type }) => type === prefix || type.startsWith(`${prefix}:`))
      .sort((a, b) => (a.created < b.created ? 1 : -1));
    const key = JSON.stringify(prefix);
    const { rows } = await view(
      `by_type?startkey=[${key},[]]&endkey=[${key},null]&descending=true`);
    assert.deepEqual(rows.map((row) => row.id), expected.map((doc) => doc._id), prefix);
  }
  const referrers = docs.filter((doc) => doc.references.includes('sample.tag.sale'));
  const { rows } = await view('references?key="sample.tag.sale"&reduce=false');
  assert.deepEqual(rows.map((row) => row.id).sort(), referrers.map((doc) => doc._id).sort());
  const counts = await view('references?group=true&key="sample.tag.sale"');
  assert.equal(counts.rows[0].value, referrers.length);
});
