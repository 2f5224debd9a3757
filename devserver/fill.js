// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { readdirSync, readFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { isDeepStrictEqual, parseArgs } from 'node:util';

import { Client } from './lib/client.js';
import { withCopies } from './lib/copies.js';

const USAGE = 'Usage: fill.js [--count N] http://[user:pass@]host:port/database [DIR]';
/** Documents in one request. */
const BATCH = 1000;
const DEFAULT_FOLDER = fileURLToPath(new URL('../database', import.meta.url));

/**
 * The design document and everything below sample/, in the order of the file names, with copies if
 * there shall be more documents than that.
 */
function readContent(folder, count) {
  const samples = path.join(folder, 'sample');
  const files = readdirSync(samples).filter((name) => name.endsWith('.json')).sort();
  return [
    readJson(path.join(folder, 'design.json')),
    ...withCopies(files.flatMap((name) => readJson(path.join(samples, name))), count),
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

async function fill(address, folder, count) {
  const client = new Client(address);
  const docs = readContent(folder, count);
  await ensureDatabase(client);
  for (let start = 0; start < docs.length; start += BATCH)
    await fillIn(client, docs.slice(start, start + BATCH));
  // Builds the index of the views, which the first reader would otherwise have to wait for.
  await client.expect('GET', '/_design/tessaro/_view/by_type?limit=0');
  console.log(`Filled ${client.database}: ${docs.length} documents`);
}

async function fillIn(client, docs) {
  const changed = await outdated(client, docs);
  const results = await client.expect('POST', '/_bulk_docs', { docs: changed });
  const refused = results.find((result) => result.error);
  if (refused)
    throw new Error(`${refused.id}: ${refused.error}: ${refused.reason}`);
}

/** Address, folder and number of documents, or null. */
function readArguments() {
  try {
    const { values, positionals } = parseArgs({
      options: { count: { type: 'string', default: '0' } },
      allowPositionals: true,
    });
    const [address, folder = DEFAULT_FOLDER, ...others] = positionals;
    const valid = address !== undefined && others.length === 0 && /^\d+$/.test(values.count);
    return valid ? { address, folder, count: Number(values.count) } : null;
  } catch {
    return null;
  }
}

const options = readArguments();
if (options === null) {
  console.error(USAGE);
  process.exit(2);
}
try {
  await fill(options.address, options.folder, options.count);
} catch (error) {
  console.error(`Cannot fill the database: ${error.message}`);
  process.exit(1);
}
