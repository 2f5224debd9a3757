// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import http from 'node:http';
import { parseArgs } from 'node:util';

import { Router } from './lib/router.js';
import { SequenceFormat } from './lib/sequence.js';
import { isValidName, Store } from './lib/store.js';

const USAGE =
  'Usage: server.js --port N --db NAME [--user U --pass P] [--numeric-seq] [--disk DIR]';
const MINUTES = 60_000;

function readArguments() {
  const { values } = parseArgs({
    options: {
      port: { type: 'string' },
      db: { type: 'string' },
      user: { type: 'string' },
      pass: { type: 'string' },
      'numeric-seq': { type: 'boolean', default: false },
      disk: { type: 'string' },
    },
  });
  if (!/^\d{1,5}$/.test(values.port ?? '') || Number(values.port) > 65535)
    throw new Error('--port needs a number from 0 (any free port) to 65535');
  if (!isValidName(values.db ?? '')) {
    throw new Error('--db needs a name of a-z, 0-9 and _$()+-/ that begins with a letter');
  }
  if ((values.user === undefined) !== (values.pass === undefined))
    throw new Error('--user and --pass belong together');
  if (values.user?.includes(':'))
    throw new Error('--user must not contain ":"');
  if (values.disk === '')
    throw new Error('--disk needs a folder');
  return { ...values, port: Number(values.port) };
}

function argumentsOrExit() {
  try {
    return readArguments();
  } catch (error) {
    console.error(`${error.message}\n${USAGE}`);
    process.exit(2);
  }
}

async function openStore(options) {
  const store = new Store(options.disk);
  try {
    const database = store.has(options.db) ? store.open(options.db) : store.create(options.db);
    await database.updateSequence();
    return store;
  } catch (error) {
    console.error(`Cannot open the database ${options.db}: ${error.message}`);
    process.exit(1);
  }
}

function start(options, store) {
  const router = new Router({
    store,
    sequences: new SequenceFormat(options['numeric-seq']),
    credentials: options.user === undefined ? undefined : `${options.user}:${options.pass}`,
  });
  // Clients keep connections for long and upload slowly, as CouchDB lets them.
  const server = http.createServer(
    { keepAliveTimeout: 5 * MINUTES, requestTimeout: 0, maxHeaderSize: 64 * 1024 },
    (request, response) => router.handle(request, response));
  server.on('error', (error) => {
    console.error(`Cannot listen on port ${options.port}: ${error.message}`);
    process.exit(1);
  });
  server.listen(options.port, '127.0.0.1', () => {
    const { port } = server.address();
    console.log(`READY http://127.0.0.1:${port}/${encodeURIComponent(options.db)}`);
  });
  return server;
}

async function stop(server, store) {
  server.close();
  server.closeAllConnections();
  await store.close();
  process.exit(0);
}

const options = argumentsOrExit();
const store = await openStore(options);
const server = start(options, store);
for (const signal of ['SIGTERM', 'SIGINT'])
  process.once(signal, () => stop(server, store));
