// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { HttpError } from './errors.js';

const STARTED = String(Date.now() * 1000);

export function welcome({ exchange }) {
  exchange.sendJson(200, {
    couchdb: 'Welcome',
    version: '3.4.0',
    features: [],
    vendor: { name: 'The VorrelDataCore authors' },
  });
}

export function up({ exchange }) {
  exchange.sendJson(200, { status: 'ok', seeds: {} });
}

export function allDatabases({ exchange, store }) {
  exchange.sendJson(200, store.names());
}

export function createDatabase({ exchange, store, name }) {
  store.create(name);
  exchange.sendJson(201, { ok: true }, { Location: exchange.address(name) });
}

export async function databaseInfo({ exchange, database, sequences }) {
  const info = await database.pouch.info();
  exchange.sendJson(200, {
    instance_start_time: STARTED,
    db_name: database.name,
    update_seq: sequences.encode(info.update_seq),
    doc_count: info.doc_count,
    compact_running: false,
    props: {},
  });
}

export async function deleteDatabase({ exchange, store, name }) {
  if (exchange.query.has('rev')) {
    throw new HttpError(400, 'bad_request',
      "You tried to DELETE a database with a ?=rev parameter. Did you mean to DELETE a document?");
  }
  await store.remove(name);
  exchange.sendJson(200, { ok: true });
}
