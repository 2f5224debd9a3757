// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { readdirSync, readFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { isDeepStrictEqual } from 'node:util';

import { Client } from './lib/client.js';

const USAGE = 'Usage: fill.js http://[user:pass@]host:port/database [DIR]';
const DEFAULT_FOLDER = fileURLToPath(new URL('../database', import.meta.url));

/** The design document and everything below sample/, in the order of the file names. */
function readContent(folder) {
  const samples = path.join(folder, 'sample');
  const files = readdirSync(samples).filter((name) => name.endsWith('.json')).sort();
  return [
    readJson(path.join(folder, 'design.json')),
    ...files.flatMap((name) => readJson(path.join(samples, name))),
  ];
}

function readJson(file) {
  try {
    return JSON.parse(readFileSync(file, 'utf8'));
  } catch (error) {
    throw new Error(`${file}: ${error.message}`);
  }
}

async function ensureDatabase(client) {
  const found = await client.request('HEAD', '');
  if (found.status === 404)
    await client.expect('PUT', '');
  else if (found.status !== 200)
    await client.expect('GET', '');
}

/** A document with the types of its attachments only: their names are digests of their contents. */
function withoutBytes({ _attachments = {}, ...doc }) {
  const types = Object.entries(_attachments)
    .map(([name, { content_type: type }]) => [name, type]);
  return { ...doc, _attachments: Object.fromEntries(types) };
}

/** What has to be written: documents that the database lacks or holds with other content. */
async function outdated(client, docs) {
  const { rows } = await client.expect('POST', '/_all_docs?include_docs=true',
    { keys: docs.map((doc) => doc._id) });
  return docs.flatMap((doc, index) => {
    const { _rev, ...stored } = rows[index].doc ?? {};
    if (isDeepStrictEqual(withoutBytes(stored), withoutBytes(doc)))
      return [];
    return [_rev === undefined ? doc : { ...doc, _rev }];
  });
}

async function fill(address, folder) {
  const client = new Client(address);
  const docs = readContent(folder);
  await ensureDatabase(client);
  const changed = await outdated(client, docs);
  const results = await client.expect('POST', '/_bulk_docs', { docs: changed });
  const refused = results.find((result) => result.error);
  if (refused)
    throw new Error(`${refused.id}: ${refused.error}: ${refused.reason}`);
  console.log(`Filled ${client.database}: ${docs.length} documents`);
}

const [address, folder = DEFAULT_FOLDER, ...others] = process.argv.slice(2);
if (address === undefined || others.length > 0) {
  console.error(USAGE);
  process.exit(2);
}
try {
  await fill(address, folder);
} catch (error) {
  console.error(`Cannot fill the database: ${error.message}`);
  process.exit(1);
}
