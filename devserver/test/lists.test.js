// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import assert from 'node:assert/strict';

import { play, sharedServer, test } from './support.js';

const server = sharedServer();

const BULK = '/_bulk_docs';
const bulk = (...docs) => ({ body: { docs } });

test('documents are written in bulk', () => play(server.client, [
  ['POST', BULK, bulk({ _id: 'b1' }, { _id: 'b2' }, { _id: 'b1' }), 201,
    [{ ok: true, id: 'b1' }, { ok: true, id: 'b2' }, { id: 'b1', error: 'conflict' }]],
  ['POST', BULK, bulk({ _id: 'b2', _attachments: { x: { stub: true } } }, { x: 1 }), 201,
    [{ id: 'b2', error: 'conflict', reason: 'Document update conflict.' }, { ok: true }]],
  ['POST', BULK, bulk({ _id: 'b2', _rev: '{b2}', _deleted: true }), 201,
    [{ ok: true, rev: /^2-/ }]],
  ['POST', BULK, { body: { new_edits: false, docs: [{ _id: 'n', _rev: '3-abc' }] } }, 201, []],
  ['GET', '/n', {}, 200, { _rev: '3-abc' }],
  ['POST', BULK, { body: { new_edits: false, docs: [{ _rev: '1-a', _revisions: 5 }] } }, 400],
  ['POST', BULK, bulk({ _id: 'never' }, { _bad: 1 }), 400, { error: 'doc_validation' }],
  ['GET', '/never', {}, 404],
  ['POST', BULK, bulk(), 201, []],
  ['POST', BULK, { body: {} }, 400, { reason: 'POST body must include `docs` parameter.' }],
  ['POST', BULK, { body: { docs: 1 } }, 400, { reason: '`docs` parameter must be an array.' }],
  ['GET', BULK, {}, 405],
]));

test('all documents are listed by key, range and page', async () => {
  const revisions = await play(server.client, [
    ['PUT', '/k1', { body: { x: 1 } }, 201],
    ['PUT', '/k2', { body: { x: 2 } }, 201],
    ['PUT', '/k3', { body: {} }, 201],
    ['DELETE', '/k3?rev={k3}', {}, 200],
  ]);
  const keys = { keys: ['k2', 'none', 'k3', 'k2'] };
  const k2 = { id: 'k2', key: 'k2', value: { rev: revisions.k2 } };
  const k3 = { id: 'k3', key: 'k3', value: { rev: revisions.k3, deleted: true } };
  const none = { key: 'none', error: 'not_found' };
  const doc = { _id: 'k2', _rev: revisions.k2, x: 2 };
  const { rows } = await server.client.expect('POST', '/_all_docs?include_docs=true', keys);
  assert.deepEqual(rows, [{ ...k2, doc }, none, { ...k3, doc: null }, { ...k2, doc }]);
  const plain = await server.client.expect('POST', '/_all_docs', keys);
  assert.deepEqual(plain.rows, [k2, none, k3, k2]);
  const ids = (...list) => ({ rows: list.map((id) => ({ id })) });
  const range = '/_all_docs?startkey="k"&endkey="k2"';
  await play(server.client, [
    ['GET', `${range}`, {}, 200, ids('k1', 'k2')],
    ['GET', `${range}&inclusive_end=false`, {}, 200, ids('k1')],
    ['GET', `${range}&limit=1&skip=1`, {}, 200, ids('k2')],
    ['GET', `${range}&limit=0`, {}, 200, ids()],
    ['GET', '/_all_docs?startkey="k9"&descending=true&limit=1', {}, 200, ids('k2')],
    ['GET', '/_all_docs?key="k1"', {}, 200, ids('k1')],
    ['GET', '/_all_docs?keys=["k1"]', {}, 200, ids('k1')],
    ['GET', '/_all_docs?startkey=k', {}, 400, { error: 'bad_request' }],
    ['GET', '/_all_docs?limit=-1', {}, 400, { error: 'query_parse_error' }],
    ['GET', '/_all_docs?include_docs=1', {}, 400, { error: 'query_parse_error' }],
    ['POST', '/_all_docs', { body: { keys: 'k1' } }, 400, { error: 'bad_request' }],
    ['POST', '/_all_docs', { body: { keys: [] } }, 200, ids()],
  ]);
});

test('views collate keys and answer ranges, pages and reductions', async () => {
  const keys = { v1: null, v2: false, v3: 7, v4: 'a', v5: 'ü', v6: [], v7: ['a', null],
    v8: ['a', 'z'], v9: ['a', []], w0: {} };
  const docs = Object.entries(keys).map(([_id, key]) => ({ _id, key }));
  await play(server.client, [
    ['PUT', '/_design/d', { body: { views: {
      keyed: { map: 'function (doc) { if (doc.key !== undefined) emit(doc.key, 2); }' },
      counted: { map: 'function (doc) { if (doc.key) emit(doc.key[0], 2); }', reduce: '_count' },
      summed: { map: 'function (doc) { if (doc.key) emit(doc.key[0], 2); }', reduce: '_sum' },
      failing: { map: 'function (doc) { if (doc.key.length) emit(doc.key, 1); }' },
    } } }, 201],
    ['POST', BULK, bulk(...docs), 201],
  ]);
  const view = '/_design/d/_view/';
  const ids = (...list) => ({ rows: list.map((id) => ({ id })) });
  await play(server.client, [
    ['GET', `${view}keyed`, {}, 200, { total_rows: 10, offset: 0, ...ids(...Object.keys(keys)) }],
    ['GET', `${view}keyed?descending=true&startkey=["a",[]]&endkey=["a",null]`, {}, 200,
      ids('v9', 'v8', 'v7')],
    ['GET', `${view}keyed?limit=0`, {}, 200, { total_rows: 10, rows: [] }],
    ['GET', `${view}keyed?startkey=7&endkey="a"&inclusive_end=false`, {}, 200, ids('v3')],
    ['GET', `${view}keyed?skip=1&limit=2&include_docs=true`, {}, 200,
      { rows: [{ id: 'v2', key: false, value: 2, doc: { _id: 'v2' } }, { id: 'v3' }] }],
    ['GET', `${view}keyed?key="ü"`, {}, 200, ids('v5')],
    ['POST', `${view}keyed`, { body: { keys: ['a', 1, 'a'] } }, 200, ids('v4', 'v4')],
    ['GET', `${view}keyed?keys=["a",7]`, {}, 200, ids('v4', 'v3')],
    ['GET', `${view}keyed?startkey=7&endkey=1`, {}, 400, { error: 'query_parse_error' }],
    ['GET', `${view}keyed?reduce=true`, {}, 400, { error: 'query_parse_error' }],
    ['GET', `${view}keyed?group=true`, {}, 400, { error: 'query_parse_error' }],
    ['GET', `${view}counted?startkey="a"&endkey="a"`, {}, 200, { rows: [{ key: null, value: 4 }] }],
    ['GET', `${view}summed?group=true`, {}, 200,
      { rows: [{ key: null, value: 6 }, { key: 'a', value: 8 }, { key: 'ü', value: 2 }] }],
    ['GET', `${view}counted?reduce=false&key="ü"`, {}, 200, ids('v5')],
    ['GET', `${view}failing?key="a"`, {}, 200, ids('v4')],
    ['GET', `${view}none`, {}, 404, { reason: 'missing_named_view' }],
    ['GET', '/_design/none/_view/x', {}, 404, { reason: 'missing' }],
    ['PUT', '/v4', { body: { key: 'b' } }, 409],
    ['DELETE', `/v5?rev=${(await server.client.expect('GET', '/v5'))._rev}`, {}, 200],
    ['GET', `${view}keyed?key="ü"`, {}, 200, ids()],
  ]);
});
