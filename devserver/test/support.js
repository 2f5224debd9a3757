// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { createInterface } from 'node:readline';
import { after, before, test as nodeTest } from 'node:test';
import { fileURLToPath } from 'node:url';

import { Client } from '../lib/client.js';

const script = (name) => fileURLToPath(new URL(`../${name}`, import.meta.url));

/** A test that waits for something that never comes fails instead of hanging. */
export const test = (title, body) => nodeTest(title, { timeout: 60_000 }, body);

/** Runs a program of this folder to its end. */
export async function run(name, ...args) {
  const child = spawn(process.execPath, [script(name), ...args]);
  const output = { stdout: '', stderr: '' };
  for (const stream of ['stdout', 'stderr'])
    child[stream].on('data', (data) => { output[stream] += data; });
  const [code] = await once(child, 'close');
  return { code, ...output };
}

/** A server for the tests of a whole file. */
export function sharedServer() {
  const shared = {};
  before(async () => Object.assign(shared, await startServer({ after: () => {} })));
  after(() => shared.stop());
  return shared;
}

/**
 * Starts a server on a free port, which ends with the test `t`. Gives its address, a client, and
 * `stop`, which gives the exit code.
 */
export async function startServer(t, ...args) {
  const child = spawn(process.execPath,
    [script('server.js'), '--port', '0', '--db', 'test', ...args],
    { stdio: ['ignore', 'pipe', 'inherit'] });
  const [line] = await once(createInterface(child.stdout), 'line');
  const [, address] = /^READY (http:\/\/127\.0\.0\.1:\d+\/test)$/.exec(line);
  const closed = once(child, 'close');
  const stop = async (signal = 'SIGTERM') => {
    child.kill(signal);
    return (await closed)[0];
  };
  t.after(() => stop());
  return { address, port: Number(new URL(address).port), client: new Client(address), stop };
}

/**
 * Plays a dialogue: rows of [method, path, options, status, expected], where `expected` is a part
 * of the answered JSON. "{id}" in a path or a value stands for the last revision of that document.
 */
export async function play(client, rows) {
  const revisions = {};
  const fillIn = (value) => {
    const text = JSON.stringify(value);
    return text && JSON.parse(text.replace(/\{(\w+)\}/g, (all, id) => revisions[id] ?? all));
  };
  for (const [method, path, { body, raw, headers } = {}, status, expected] of rows) {
    const answer = await client.request(method, fillIn(path), raw ?? fillIn(body), fillIn(headers));
    const title = `${method} ${path} ${JSON.stringify(body ?? '')}: ${answer.body}`;
    assert.equal(answer.status, status, title);
    for (const { id, rev } of [answer.json ?? {}].flat()) {
      if (id && rev)
        revisions[id] = rev;
    }
    if (expected !== undefined)
      assertPart(answer.json, expected, title);
  }
  return revisions;
}

/** Objects may hold more than is expected, arrays and values may not; a RegExp matches a text. */
export function assertPart(actual, expected, title) {
  if (expected instanceof RegExp) {
    assert.match(String(actual), expected, title);
  } else if (Array.isArray(expected)) {
    assert.equal(actual?.length, expected.length, title);
    expected.forEach((entry, index) => assertPart(actual[index], entry, title));
  } else if (typeof expected === 'object' && expected !== null) {
    for (const [key, value] of Object.entries(expected))
      assertPart(actual?.[key], value, title);
  } else {
    assert.deepEqual(actual, expected, title);
  }
}
