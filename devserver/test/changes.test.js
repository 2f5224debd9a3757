// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import assert from 'node:assert/strict';
import { once } from 'node:events';
import http from 'node:http';
import { createInterface } from 'node:readline';

import { assertPart, play, sharedServer, startServer, test } from './support.js';

const server = sharedServer();

/** Opens a feed; `next` gives the next line, null at the end. */
async function openFeed(query) {
  const address = `${server.address}/_changes?feed=continuous&${query}`;
  const request = http.get(address, { agent: false });
  const [response] = await once(request, 'response');
  const lines = createInterface(response)[Symbol.asyncIterator]();
  const next = async () => {
    const { value, done } = await lines.next();
    return done ? null : value;
  };
  const nextChange = async () => {
    for (;;) {
      const line = await next();
      if (line !== '')
        return line && JSON.parse(line);
    }
  };
  return { response, next, nextChange, close: () => request.destroy() };
}

const change = (id, generation) =>
  ({ id, seq: /^\d+-g1AAAA/, changes: [{ rev: new RegExp(`^${generation}-`) }] });

test('changes are listed once per document, by sequence', async () => {
  await play(server.client, [
    ['PUT', '/a', { body: { x: 1 } }, 201],
    ['PUT', '/b', { body: {} }, 201],
    ['PUT', '/a?rev={a}', { body: { x: 2 } }, 201],
    ['DELETE', '/b?rev={b}', {}, 200],
  ]);
  const all = await server.client.expect('GET', '/_changes');
  assertPart(all, { pending: 0, last_seq: /^4-/,
    results: [change('a', 2), { ...change('b', 2), deleted: true }] });
  const first = all.results[0].seq;
  const ids = (...list) => ({ results: list.map((id) => ({ id })) });
  await play(server.client, [
    ['GET', '/_changes?limit=1', {}, 200, { ...ids('a'), last_seq: first, pending: 1 }],
    ['GET', '/_changes?limit=0', {}, 200, ids('a')],
    ['GET', `/_changes?since=${first}`, {}, 200, ids('b')],
    ['GET', '/_changes?since=3', {}, 200, ids('b')],
    ['GET', '/_changes?since=now', {}, 200, { ...ids(), last_seq: all.last_seq }],
    ['GET', '/_changes?descending=true', {}, 200, ids('b', 'a')],
    ['GET', '/_changes?include_docs=true&limit=1', {}, 200,
      { results: [{ doc: { _id: 'a', x: 2 } }] }],
    ['POST', '/_changes?filter=_doc_ids', { body: { doc_ids: ['b'] } }, 200, ids('b')],
    ['POST', '/_changes', { body: {} }, 200, ids('a', 'b')],
    ['GET', '/_changes?since=abc', {}, 400, { error: 'bad_request' }],
    ['GET', '/_changes?feed=other', {}, 400, { error: 'bad_request' }],
    ['GET', '/_changes?heartbeat=0', {}, 400, { error: 'bad_request' }],
    ['HEAD', '/_changes?feed=continuous', {}, 200],
  ]);
});

test('a long poll ends with the first change or its timeout', async () => {
  const empty = await server.client.expect('GET', '/_changes?feed=longpoll&since=now&timeout=1');
  assert.deepEqual(empty.results, []);
  const stored = await server.client.expect('GET', '/_changes?feed=longpoll&since=0');
  assert.equal(stored.results.length, 2);
  const address = `${server.address}/_changes?feed=longpoll&since=${empty.last_seq}`;
  const [response] = await once(http.get(address, { agent: false }), 'response');
  await server.client.request('PUT', '/polled', {});
  const chunks = await response.toArray();
  assertPart(JSON.parse(chunks.join('')), { results: [change('polled', 1)] });
});

test('a continuous feed begins with a blank line, beats, and passes changes on', async () => {
  const feed = await openFeed('since=now&heartbeat=5');
  assert.equal(feed.response.headers['content-type'], 'application/json');
  for (let beat = 0; beat < 3; ++beat)
    assert.equal(await feed.next(), '');
  await server.client.request('PUT', '/live', {});
  assertPart(await feed.nextChange(), change('live', 1));
  const many = Array.from({ length: 450 }, (_, index) => ({ _id: `many${index}` }));
  await server.client.expect('POST', '/_bulk_docs', { docs: many });
  for (const { _id } of many)
    assert.equal((await feed.nextChange()).id, _id);
  feed.close();
});

test('a continuous feed ends with its sequence at the timeout or the limit', async () => {
  for (const query of ['since=now&timeout=1', 'limit=1']) {
    const feed = await openFeed(query);
    let last;
    for (let line = await feed.nextChange(); line; line = await feed.nextChange())
      last = line;
    assertPart(last, { last_seq: /^\d+-/ });
  }
});

test('feeds end when their database is deleted', async () => {
  const feed = await openFeed('since=now&heartbeat=60000');
  assert.equal(await feed.next(), '');
  await server.client.request('DELETE', '');
  assertPart(await feed.nextChange(), { last_seq: /^\d+-/ });
  assert.equal(await feed.next(), null);
});

test('sequences are numbers on demand', async (t) => {
  const numeric = await startServer(t, '--numeric-seq');
  await play(numeric.client, [
    ['PUT', '/a', { body: {} }, 201],
    ['GET', '', {}, 200, { update_seq: 1 }],
    ['GET', '/_changes', {}, 200, { last_seq: 1, results: [{ seq: 1 }] }],
    ['GET', '/_changes?since=1-g1AAAA', {}, 200, { results: [] }],
  ]);
});
