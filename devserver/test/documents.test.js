// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import assert from 'node:assert/strict';
import { Buffer } from 'node:buffer';
import { once } from 'node:events';
import net from 'node:net';

import { Client } from '../lib/client.js';
import { play, sharedServer, startServer, test } from './support.js';

const CONFLICT = { error: 'conflict', reason: 'Document update conflict.' };
const missing = (reason) => ({ error: 'not_found', reason });
const bad = (reason, error = 'bad_request') => ({ error, reason });

const server = sharedServer();

test('databases are created, described and deleted', async () => {
  const other = new Client(server.address.replace('test', 'my%2Fdb'));
  await play(other, [
    ['GET', '', {}, 404, missing('Database does not exist.')],
    ['PUT', '', {}, 201, { ok: true }],
    ['PUT', '', {}, 412, bad(/already exists/, 'file_exists')],
    ['PUT', '/a', { body: {} }, 201],
    ['GET', '', {}, 200, { db_name: 'my/db', doc_count: 1, update_seq: /^1-g1AAAA/ }],
    ['HEAD', '', {}, 200],
    ['DELETE', '', {}, 200, { ok: true }],
    ['DELETE', '', {}, 404],
    ['GET', '/a', {}, 404, missing('Database does not exist.')],
    ['PUT', '', {}, 201],
    ['GET', '/a', {}, 404, missing('missing')],
    ['PUT', '/../Upper', {}, 400, bad(/Name: 'Upper'/, 'illegal_database_name')],
    ['PUT', '/../_x', {}, 400],
    ['PUT', '/../a%20b', {}, 400],
    ['POST', '/../_up', { body: {} }, 405, bad('Only GET,HEAD allowed', 'method_not_allowed')],
    ['GET', '/../_all_dbs', {}, 200, ['my/db', 'test']],
  ]);
});

test('documents are written and read by revision', () => play(server.client, [
  ['GET', '/a', {}, 404, missing('missing')],
  ['DELETE', '/a', {}, 404, missing('missing')],
  ['PUT', '/a', { body: { x: 1 }, headers: { 'If-Match': '' } }, 400, bad('Invalid rev format')],
  ['PUT', '/a', { body: { x: 1, _rev: '1-abc' } }, 409, CONFLICT],
  ['PUT', '/a', { body: { x: 1 } }, 201, { ok: true, id: 'a', rev: /^1-[0-9a-f]{32}$/ }],
  ['PUT', '/a', { body: { x: 2 } }, 409, CONFLICT],
  ['PUT', '/a', { body: { x: 2 }, headers: { 'If-Match': '1-abc' } }, 409, CONFLICT],
  ['PUT', '/a?rev={a}', { body: { x: 2 }, headers: { 'If-Match': '1-abc' } }, 400],
  ['PUT', '/a', { body: { _rev: '1-abc' }, headers: { 'If-Match': '{a}' } }, 400],
  ['PUT', '/a', { body: { x: 2 }, headers: { 'If-Match': '"{a}"' } }, 201, { rev: /^2-/ }],
  ['PUT', '/a', { body: { x: 3, _rev: '{a}' } }, 201, { rev: /^3-/ }],
  ['PUT', '/a?rev={a}', { body: { x: 4, _id: 'other', _revs_info: [] } }, 201],
  ['GET', '/a?revs=true', {}, 200, { _id: 'a', _rev: /^4-/, x: 4, _revisions: { start: 4 } }],
  ['PUT', '/a?rev={a}', { body: { _deleted: true } }, 200, { rev: /^5-/ }],
  ['GET', '/a', {}, 404, missing('deleted')],
  ['HEAD', '/a', {}, 404],
  ['GET', '/a?rev={a}', {}, 200, { _deleted: true }],
  ['DELETE', '/a?rev={a}', {}, 404, missing('deleted')],
  ['PUT', '/a', { body: { x: 6 } }, 201, { rev: /^6-/ }],
  ['DELETE', '/a', {}, 409, CONFLICT],
  ['DELETE', '/a', { headers: { 'If-Match': '{a}' } }, 200, { ok: true, id: 'a', rev: /^7-/ }],
  ['POST', '', { body: { y: 1 } }, 201, { id: /^[0-9a-f]{32}$/ }],
  ['POST', '', { body: { _id: 'p' } }, 201, { id: 'p' }],
  ['POST', '', { body: { _id: 'p' } }, 409],
  ['PUT', '/_local/l', { body: { z: 1 } }, 201, { id: '_local/l', rev: '0-1' }],
  ['GET', '/_local/l', {}, 200, { z: 1, _rev: '0-1' }],
  ['PUT', '/two+words', { body: {} }, 201, { id: 'two words' }],
  ['DELETE', '/_local/l?rev=0-1', {}, 200],
  ['GET', '/_local/l', {}, 404],
]));

test('malformed documents are refused', () => play(server.client, [
  ['PUT', '/m', { raw: Buffer.from('{') }, 400, bad('invalid UTF-8 JSON')],
  ['PUT', '/m', { raw: Buffer.from([0x22, 0xff, 0x22]) }, 400, bad('invalid UTF-8 JSON')],
  ['PUT', '/m', {}, 400, bad('invalid UTF-8 JSON')],
  ['PUT', '/m', { body: [1] }, 400, bad('Document must be a JSON object')],
  ['PUT', '/m', { body: { _foo: 1 } }, 400,
    bad('Bad special document member: _foo', 'doc_validation')],
  ['PUT', '/m', { body: { _deleted: 1 } }, 400, bad(/_deleted/, 'doc_validation')],
  ['PUT', '/m', { body: { _rev: 'x' } }, 400, bad('Invalid rev format')],
  ['PUT', '/m?rev=x', { body: {} }, 400, bad('Invalid rev format')],
  ['PUT', '/_m', { body: {} }, 400, bad(/underscore/, 'illegal_docid')],
  ['POST', '', { body: { _id: 5 } }, 400, bad(/must be a string/, 'illegal_docid')],
  ['POST', '', { raw: Buffer.from('{}') }, 415, bad(/application/, 'bad_content_type')],
  ['PUT', '/m', { body: { text: 'x'.repeat(8_000_001) } }, 413, bad('m', 'document_too_large')],
  ['GET', '/%ff', {}, 400],
]));

test('attachments are stored, kept by stubs and checked', () => play(server.client, [
  ['PUT', '/t/one', { raw: Buffer.from('first'), headers: { 'Content-Type': 'image/png' } }, 201,
    { ok: true, id: 't', rev: /^1-/ }],
  ['PUT', '/t/two', { raw: Buffer.from('second') }, 409, CONFLICT],
  ['PUT', '/t/a/b', { raw: Buffer.from('second'), headers: { 'If-Match': '{t}' } }, 201],
  ['GET', '/t', {}, 200, { _attachments: {
    one: { stub: true, content_type: 'image/png', length: 5, revpos: 1, digest: /^md5-/ },
    'a/b': { revpos: 2, content_type: 'application/octet-stream' } } }],
  ['PUT', '/t?rev={t}', { body: { _attachments: { one: { stub: true } } } }, 201],
  ['GET', '/t/a/b', {}, 404, missing('Document is missing attachment')],
  ['PUT', '/t?rev={t}', { body: { _attachments: { one: { stub: true }, no: { stub: true } } } },
    412, bad('Invalid attachment stub in t for no', 'missing_stub')],
  ['PUT', '/t', { body: { _attachments: { one: { stub: true } } } }, 409, CONFLICT],
  ['PUT', '/u', { body: { _attachments: { one: { stub: true } } } }, 412],
  ['PUT', '/u', { body: { _attachments: { one: {} } } }, 400,
    bad('Invalid attachment data for one')],
  ['PUT', '/u', { body: { _attachments: { one: { data: '*' } } } }, 400],
  ['PUT', '/u', { body: { _attachments: { _one: { data: '' } } } }, 400],
  ['PUT', '/u', { body: { _attachments: {} } }, 201],
  ['PUT', '/u/_x', { raw: Buffer.from('x') }, 400],
  ['PUT', '/t?rev={t}', { body: { _attachments: {
    one: { stub: true }, three: { content_type: 'text/plain', data: 'aGk=' } } } }, 201],
  ['GET', '/t?attachments=true', {}, 200, { _attachments: { three: { data: 'aGk=' } } }],
  ['DELETE', '/t/three', {}, 409],
  ['DELETE', '/t/three?rev={t}', {}, 200, { ok: true }],
  ['GET', '/t/three', {}, 404],
  ['DELETE', '/t?rev={t}', {}, 200],
  ['GET', '/t/one', {}, 404, missing('deleted')],
  ['PUT', '/t/one', { raw: Buffer.alloc(0) }, 201],
]));

test('answers carry revision, type and caching headers, HEAD without a body', async () => {
  const put = await server.client.request('PUT', '/h%2F%C3%A9%2B', { x: 1 });
  const etag = `"${put.json.rev}"`;
  assert.equal(put.json.id, 'h/é+');
  assert.equal(put.headers.location, `${server.address}/h%2F%C3%A9%2B`);
  for (const method of ['GET', 'HEAD']) {
    const { status, headers, body } = await server.client.request(method, '/h%2F%C3%A9%2B');
    assert.equal(status, 200);
    assert.equal(headers.etag, etag);
    assert.equal(headers['content-type'], 'application/json');
    assert.equal(headers['cache-control'], 'must-revalidate');
    assert.equal(body.length, method === 'HEAD' ? 0 : Number(headers['content-length']));
  }
  const again = await server.client.request('GET', '/h%2F%C3%A9%2B', undefined,
    { 'If-None-Match': etag });
  assert.equal(again.status, 304);
  const data = Buffer.from([0, 255, 10]);
  await server.client.request('PUT', '/bin/x', data, { 'Content-Type': 'image/x' });
  const read = await server.client.request('GET', '/bin/x');
  assert.deepEqual(read.body, data);
  assert.equal(read.headers['content-type'], 'image/x');
});

test('a stale write of a large body is refused before the body is read', async () => {
  await server.client.request('PUT', '/large', {});
  const path = new URL(server.address).pathname;
  const requests = [
    ['large', 'If-Match: 1-00000000000000000000000000000000\r\n'],
    ['large/picture', ''],
  ];
  for (const [target, header] of requests) {
    const socket = net.connect(server.port, '127.0.0.1');
    socket.setEncoding('utf8');
    let received = '';
    socket.on('data', (text) => { received += text; });
    socket.on('error', () => {});
    socket.write(`PUT ${path}/${target} HTTP/1.1\r\nHost: x\r\n${header}`);
    socket.write('Content-Length: 9000000\r\n\r\n{"');
    await once(socket, 'close');
    assert.match(received, /^HTTP\/1\.1 409 [^]*Connection: close[^]*"error":"conflict"/);
  }
});

test('with credentials every request needs them, and 401 does not ask for them', async (t) => {
  const guarded = await startServer(t, '--user', 'jörg', '--pass', 'p:w');
  const withUser = (user) => new Client(guarded.address.replace('//', `//${user}@`));
  for (const other of [guarded.client, withUser('j%C3%B6rg:no')]) {
    const answer = await other.request('PUT', '/a', {});
    assert.equal(answer.status, 401);
    assert.equal(answer.json.error, 'unauthorized');
    assert.equal(answer.headers['www-authenticate'], undefined);
  }
  await play(withUser('j%C3%B6rg:p%3Aw'), [
    ['GET', '/a', {}, 404],
    ['PUT', '/a', { body: {} }, 201],
  ]);
});
