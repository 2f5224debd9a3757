// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { Buffer } from 'node:buffer';
import { timingSafeEqual } from 'node:crypto';

import { allDocuments, bulkDocuments } from './bulk.js';
import { changes } from './changes.js';
import {
  allDatabases, createDatabase, databaseInfo, deleteDatabase, up, welcome,
} from './databases.js';
import {
  deleteAttachment, deleteDocument, getAttachment, getDocument, postDocument, putAttachment,
  putDocument,
} from './documents.js';
import { HttpError, notFound, toHttpError } from './errors.js';
import { Exchange } from './exchange.js';
import { queryView } from './views.js';

const SERVER_RESOURCES = {
  _up: { GET: up },
  _all_dbs: { GET: allDatabases },
};

const DATABASE_RESOURCES = {
  _all_docs: { GET: allDocuments, POST: allDocuments },
  _bulk_docs: { POST: bulkDocuments },
  _changes: { GET: changes, POST: changes },
};

const DOCUMENT = { GET: getDocument, PUT: putDocument, DELETE: deleteDocument };
const ATTACHMENT = { GET: getAttachment, PUT: putAttachment, DELETE: deleteAttachment };
const VIEW = { GET: queryView, POST: queryView };

/** Finds the handler of each request and answers for those that fail. */
export class Router {
  /** `credentials` is "user:password", or undefined for a server that is open to everyone. */
  constructor({ store, sequences, credentials }) {
    this.store = store;
    this.sequences = sequences;
    this.authorization = credentials === undefined
      ? undefined
      : Buffer.from(`Basic ${Buffer.from(credentials).toString('base64')}`);
  }

  async handle(request, response) {
    response.on('error', () => {});
    let exchange;
    try {
      exchange = new Exchange(request, response);
      this.checkAuthorization(request);
      await this.dispatch(exchange);
    } catch (error) {
      this.answerFailure(exchange ?? blankExchange(request, response), error);
    }
  }

  answerFailure(exchange, error) {
    const { request, response } = exchange;
    if (request.destroyed && !request.complete)
      return;
    const answer = toHttpError(error);
    if (response.headersSent)
      response.destroy();
    else
      exchange.sendError(answer);
  }

  checkAuthorization({ headers }) {
    if (!this.authorization)
      return;
    const given = Buffer.from(headers.authorization ?? '');
    if (given.length === this.authorization.length && timingSafeEqual(given, this.authorization))
      return;
    throw new HttpError(401, 'unauthorized', given.length === 0
      ? 'Authentication required.'
      : 'Name or password is incorrect.');
  }

  async dispatch(exchange) {
    const { handlers, ...target } = resourceAt(exchange.parts);
    const handler = handlers[exchange.method];
    if (!handler)
      throw methodNotAllowed(handlers);
    const context = { exchange, store: this.store, sequences: this.sequences, ...target };
    if (target.name !== undefined && handler !== createDatabase)
      context.database = this.store.open(target.name);
    await handler(context);
  }
}

/** What the parts of a path name: handlers by method, and the names that they need. */
function resourceAt([name, ...rest]) {
  if (name === undefined)
    return { handlers: { GET: welcome } };
  if (rest.length === 0 && Object.hasOwn(SERVER_RESOURCES, name))
    return { handlers: SERVER_RESOURCES[name] };
  if (rest.length === 0) {
    return { name, handlers: { GET: databaseInfo, PUT: createDatabase, DELETE: deleteDatabase,
      POST: postDocument } };
  }
  if (rest.length === 1 && Object.hasOwn(DATABASE_RESOURCES, rest[0]))
    return { name, handlers: DATABASE_RESOURCES[rest[0]] };
  return { name, ...documentResourceAt(rest) };
}

function documentResourceAt(rest) {
  const [first, ...others] = rest;
  const isReserved = first === '_design' || first === '_local';
  if (isReserved && others.length === 0)
    throw notFound('missing');
  const id = isReserved ? `${first}/${others.shift()}` : first;
  if (id.startsWith('_design/') && others.length === 2 && others[0] === '_view')
    return { design: id.slice('_design/'.length), view: others[1], handlers: VIEW };
  if (others.length === 0)
    return { id, handlers: DOCUMENT };
  return { id, attachment: others.join('/'), handlers: ATTACHMENT };
}

function methodNotAllowed(handlers) {
  const allowed = Object.keys(handlers)
    .flatMap((method) => (method === 'GET' ? ['GET', 'HEAD'] : [method]));
  return new HttpError(405, 'method_not_allowed', `Only ${allowed.join(',')} allowed`,
    { headers: { Allow: allowed.join(', ') } });
}

/** For a request whose address could not be read. */
function blankExchange(request, response) {
  return Object.assign(Object.create(Exchange.prototype), { request, response });
}
